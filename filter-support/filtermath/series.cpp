// The zeros of a series of sections, section by section.
//
// Part the system matrix [B A; D C] into the input, the sections and the output.
// Where section s is driven through those between by section r, its rows and r's
// columns hold b_s d_(s-1) ... d_(r+1) c_r, whatever bases the sections' states are
// in. So section k's own elements, its A_k, and those that tie its two neighbours to
// it and to each other,
//
//   column j of the part before:  b_k c,     row i of the part after:  b c_k,
//   and where the two cross:      b d_k c,
//
// give A_k - b_k c_k / d_k, whose eigenvalues are the section's zeros ([Kai] 2.2). The
// zeros of a series are those of its sections. Taken from the whole model they
// would need one full matrix, and D, which is a product of all d_k and may be next to
// nothing.

#include <algorithm>
#include <cmath>

#include "internal.h"

namespace filtermath {
namespace {

// How far an element may be from what a series has there, relative to the largest
// of its row or column. Designs of 100 dB stay below 1e-10, those of 150 dB below 3e-8.
constexpr double tolerance = 1e-8;

// The same relative to what a bilinear transform may leave of rounding; the deepest
// stopbands need 1e-11.
constexpr double rounding_tolerance = 1e-10;

void take_magnitudes(_matrix64 *matrix) {
  std::transform(matrix->data, matrix->data + matrix->capacity, matrix->data,
                 [](double element) { return std::abs(element); });
}

// Bounds, times the unit of rounding, what a bilinear transform leaves in each
// element of the model that it makes. It multiplies by (I + A) / 2, A being the new
// one, what has the size of R B, C R and R, with R = (I + A)^-1.
void bound_rounding(const _statespace *ss, _statespace *bound) {
  Matrix grown;
  Matrix r;
  Matrix product;
  matrix64_identity(product, ss->a->rows);
  matrix64_add(grown, product, ss->a);
  matrix64_inverse(r, grown);
  matrix64_multiply(bound->b, r, ss->b, true);
  matrix64_multiply(bound->c, ss->c, r, true);
  for (_matrix64 *matrix :
       {static_cast<_matrix64 *>(grown), static_cast<_matrix64 *>(r), bound->b, bound->c})
    take_magnitudes(matrix);

  matrix64_multiply(bound->d, bound->c, grown, true);
  matrix64_copy(product, bound->d);
  matrix64_multiply(bound->d, product, bound->b, true);
  bound->d->data[0] += std::abs(ss->d->data[0]);
  matrix64_copy(bound->c, product);
  matrix64_multiply(product, grown, bound->b, true);
  matrix64_copy(bound->b, product);
  matrix64_multiply(product, grown, r, true);
  matrix64_multiply(bound->a, product, grown, true);
}

class Series {
 public:
  explicit Series(const _statespace *ss)
      : n_(ss->a->rows), parts_(components(ss->a->data, n_)), elements_(in_order_of_parts(ss)) {
    parts_.begins.push_back(n_ + 1);
    for (int32_t k = 1; k <= sections(); ++k) links_.push_back(strongest_link(k));
  }

  int32_t sections() const { return static_cast<int32_t>(parts_.begins.size()) - 2; }

  // Whether the model is a series, but for a little rounding.
  bool exact() const {
    const std::size_t count = static_cast<std::size_t>(n_) + 1;
    std::vector<double> rows(count, 0.0);
    std::vector<double> columns(count, 0.0);
    for (std::size_t i = 0; i < elements_.size(); ++i) {
      rows[i / count] = std::max(rows[i / count], std::abs(elements_[i]));
      columns[i % count] = std::max(columns[i % count], std::abs(elements_[i]));
    }
    std::vector<double> allowed(elements_.size());
    for (std::size_t i = 0; i < elements_.size(); ++i)
      allowed[i] = tolerance * std::max(rows[i / count], columns[i % count]);
    return holds(allowed);
  }

  // Whether the model is a series but for what the bounds explain, those of
  // `bound_rounding`.
  bool exact_but_for(const _statespace *bound) const {
    std::vector<double> allowed = in_order_of_parts(bound);
    for (double &value : allowed) value *= rounding_tolerance;
    return holds(allowed);
  }

  // The product of all d_k. With b d_k c where the neighbours of section k cross, and
  // b c between it and the next one, all b and c cancel.
  double feed_through() const {
    double product = 1.0;
    for (int32_t k = 1; k <= sections(); ++k) {
      const auto [after, before] = link(k);
      product *= (*this)(after, before);
      if (k < sections()) product /= (*this)(after, link(k + 1).before);
    }
    return product;
  }

  void fill_inverse_sections(_matrix64 *quotient) const {
    matrix64_resize(quotient, n_, n_);
    matrix64_clear(quotient);
    for (int32_t k = 1; k <= sections(); ++k) {
      const auto [after, before] = link(k);
      for (int32_t row = rows_begin(k); row < rows_begin(k + 1); ++row)
        for (int32_t column = columns_begin(k); column < columns_end(k); ++column)
          matrix64_set(quotient, column - 1, row,
                       (*this)(row, column) - (*this)(row, before) * ((*this)(after, column) /
                                                                      (*this)(after, before)));
    }
  }

 private:
  // A row of the part after a section and a column of the part before it.
  struct Link {
    int32_t after;
    int32_t before;
  };

  // Part 0 is the input, part k section k, the last one the output.
  int32_t rows_begin(int32_t k) const { return parts_.begins[static_cast<std::size_t>(k - 1)]; }
  int32_t columns_begin(int32_t k) const { return k == 0 ? 0 : rows_begin(k) + 1; }
  int32_t columns_end(int32_t k) const { return columns_begin(k + 1); }
  const Link &link(int32_t k) const { return links_[static_cast<std::size_t>(k - 1)]; }

  std::size_t at(int32_t row, int32_t column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(n_ + 1) +
           static_cast<std::size_t>(column);
  }
  double operator()(int32_t row, int32_t column) const { return elements_[at(row, column)]; }

  // [B A; D C] with the states in the order of the sections.
  std::vector<double> in_order_of_parts(const _statespace *ss) const {
    std::vector<double> elements;
    elements.reserve(at(n_ + 1, 0));
    for (const int32_t row : parts_.states) {
      elements.push_back(ss->b->data[row]);
      for (const int32_t column : parts_.states)
        elements.push_back(matrix64_get(ss->a, column, row));
    }
    elements.push_back(ss->d->data[0]);
    for (const int32_t column : parts_.states) elements.push_back(ss->c->data[column]);
    return elements;
  }

  bool holds(const std::vector<double> &allowed) const {
    for (int32_t k = 1; k <= sections(); ++k) {
      const auto [after, before] = link(k);
      if ((*this)(after, before) == 0.0) return false;
      const int32_t own = strongest_column(after, columns_begin(k), columns_end(k));
      for (int32_t row = rows_begin(k + 1); row < rows_begin(k + 2); ++row)
        if (!proportional(row, after, own, columns_end(k), allowed)) return false;
      if (k > 1 && !proportional(after, link(k - 1).after, before, columns_begin(k), allowed))
        return false;
    }
    return true;
  }

  int32_t strongest_column(int32_t row, int32_t begin, int32_t end) const {
    const auto first = elements_.begin() + static_cast<std::ptrdiff_t>(at(row, 0));
    const auto strongest = std::max_element(
        first + begin, first + end, [](double a, double b) { return std::abs(a) < std::abs(b); });
    return static_cast<int32_t>(strongest - first);
  }

  // The elements beside a section are products, so that the largest row has its
  // largest element where every row has it.
  Link strongest_link(int32_t k) const {
    Link strongest{rows_begin(k + 1), columns_begin(k - 1)};
    double most = -1.0;
    for (int32_t row = rows_begin(k + 1); row < rows_begin(k + 2); ++row) {
      const int32_t column = strongest_column(row, columns_begin(k - 1), columns_end(k - 1));
      if (std::abs((*this)(row, column)) <= most) continue;
      most = std::abs((*this)(row, column));
      strongest = {row, column};
    }
    return strongest;
  }

  // Whether the first `count` elements of two rows have the ratio of those in the
  // column `pivot`. Not, if a number is none.
  bool proportional(int32_t row, int32_t reference, int32_t pivot, int32_t count,
                    const std::vector<double> &allowed) const {
    const double ratio = (*this)(row, pivot) / (*this)(reference, pivot);
    for (int32_t column = 0; column < count; ++column) {
      const double expected = ratio * (*this)(reference, column);
      if (!(std::abs((*this)(row, column) - expected) <= allowed[at(row, column)])) return false;
    }
    return true;
  }

  int32_t n_;
  Components parts_;
  std::vector<double> elements_;
  std::vector<Link> links_;
};

bool is_series(const Series &series, const _statespace *ss) {
  if (series.sections() < 2) return false;
  if (series.exact()) return true;
  const Statespace bound;
  bound_rounding(ss, bound);
  return series.exact_but_for(bound);
}

}  // namespace

bool inverse_sections(const _statespace *ss, _matrix64 *quotient) {
  const Series series(ss);
  if (!is_series(series, ss)) return false;
  series.fill_inverse_sections(quotient);
  return true;
}

std::optional<double> feed_through_of_sections(const _statespace *ss) {
  const Series series(ss);
  return series.sections() < 2 ? std::nullopt : std::optional(series.feed_through());
}

}  // namespace filtermath
