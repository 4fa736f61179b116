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
// of its row or column. A long chain of sections leaves up to 1e-10 in designs of
// 100 dB, and 1e-8 in ones of 150 dB.
constexpr double tolerance = 1e-8;

class Series {
 public:
  explicit Series(const _statespace *ss)
      : n_(ss->a->rows), parts_(components(ss->a->data, n_)), elements_(at(n_ + 1, 0)) {
    for (int32_t row = 0; row <= n_; ++row)
      for (int32_t column = 0; column <= n_; ++column)
        elements_[at(row, column)] = element_of(ss, row, column);
    parts_.begins.push_back(n_ + 1);
    for (int32_t k = 1; k <= sections(); ++k) links_.push_back(strongest_link(k));
  }

  bool holds() const {
    if (sections() < 2) return false;
    const Largest largest(elements_, n_ + 1);
    for (int32_t k = 1; k <= sections(); ++k) {
      const auto [after, before] = link(k);
      if ((*this)(after, before) == 0.0) return false;
      const int32_t own = strongest_column(after, columns_begin(k), columns_end(k));
      for (int32_t row = rows_begin(k + 1); row < rows_begin(k + 2); ++row)
        if (!proportional(row, after, own, columns_end(k), largest)) return false;
      if (k > 1 && !proportional(after, link(k - 1).after, before, columns_begin(k), largest))
        return false;
    }
    return true;
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

  // The largest magnitude of each row and column.
  struct Largest {
    Largest(const std::vector<double> &elements, int32_t count)
        : rows(static_cast<std::size_t>(count), 0.0), columns(rows) {
      auto element = elements.begin();
      for (double &row : rows)
        for (double &column : columns) {
          row = std::max(row, std::abs(*element));
          column = std::max(column, std::abs(*element++));
        }
    }
    std::vector<double> rows;
    std::vector<double> columns;
  };

  // Part 0 is the input, part k section k, the last one the output.
  int32_t sections() const { return static_cast<int32_t>(parts_.begins.size()) - 2; }
  int32_t rows_begin(int32_t k) const { return parts_.begins[static_cast<std::size_t>(k - 1)]; }
  int32_t columns_begin(int32_t k) const { return k == 0 ? 0 : rows_begin(k) + 1; }
  int32_t columns_end(int32_t k) const { return columns_begin(k + 1); }
  const Link &link(int32_t k) const { return links_[static_cast<std::size_t>(k - 1)]; }

  std::size_t at(int32_t row, int32_t column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(n_ + 1) +
           static_cast<std::size_t>(column);
  }
  double operator()(int32_t row, int32_t column) const { return elements_[at(row, column)]; }

  double element_of(const _statespace *ss, int32_t row, int32_t column) const {
    const auto state = [this](int32_t position) {
      return parts_.states[static_cast<std::size_t>(position)];
    };
    if (row < n_ && column > 0) return matrix64_get(ss->a, state(column - 1), state(row));
    if (row < n_) return ss->b->data[state(row)];
    return column > 0 ? ss->c->data[state(column - 1)] : ss->d->data[0];
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
                    const Largest &largest) const {
    const double ratio = (*this)(row, pivot) / (*this)(reference, pivot);
    for (int32_t column = 0; column < count; ++column) {
      const double expected = ratio * (*this)(reference, column);
      const double scale = std::max(largest.rows[static_cast<std::size_t>(row)],
                                    largest.columns[static_cast<std::size_t>(column)]);
      if (!(std::abs((*this)(row, column) - expected) <= tolerance * scale)) return false;
    }
    return true;
  }

  int32_t n_;
  Components parts_;
  std::vector<double> elements_;
  std::vector<Link> links_;
};

}  // namespace

bool inverse_sections(const _statespace *ss, _matrix64 *quotient) {
  const Series series(ss);
  if (!series.holds()) return false;
  series.fill_inverse_sections(quotient);
  return true;
}

}  // namespace filtermath
