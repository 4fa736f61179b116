// Models that are a series of sections, taken apart and put together again.
//
// Part the system matrix [B A; D C] into the input, the sections and the output.
// Where section s is driven through those between by section r, its rows and r's
// columns hold b_s d_(s-1) ... d_(r+1) c_r, whatever bases the sections' states are
// in; the input has c = 1, and the output b = 1 ([Kai] 2.3).
//
// What is done to a whole model loses digits where these products are small: it adds
// up terms of the size of 1, and their rounding is all that is left. Done to each
// section, it loses none, and the products are formed afterwards.

#include "series.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "components.h"

namespace filtermath {
namespace {

// How far an element may be from the product that a series has there, for each factor
// of it: some roundings that made the element, and some of taking the factors from
// their places.
constexpr double rounding = 4.0 * std::numeric_limits<double>::epsilon();

std::size_t at(int32_t index) { return static_cast<std::size_t>(index); }

// [B A; D C] with the states in the order of the components of A. Part 0 is the input,
// part k component k, and the last one the output.
class SystemMatrix {
 public:
  explicit SystemMatrix(const _statespace *ss)
      : n_(ss->a->rows), parts_(components(ss->a->data, n_)) {
    parts_.begins.push_back(n_ + 1);
    elements_.reserve(at(n_ + 1) * at(n_ + 1));
    for (const int32_t row : parts_.states) {
      elements_.push_back(ss->b->data[row]);
      for (const int32_t column : parts_.states)
        elements_.push_back(matrix64_get(ss->a, column, row));
    }
    elements_.push_back(ss->d->data[0]);
    for (const int32_t column : parts_.states) elements_.push_back(ss->c->data[column]);
  }

  int32_t sections() const { return static_cast<int32_t>(parts_.begins.size()) - 2; }
  int32_t rows_begin(int32_t k) const { return parts_.begins[at(k - 1)]; }
  int32_t columns_begin(int32_t k) const { return k == 0 ? 0 : rows_begin(k) + 1; }
  int32_t rows(int32_t k) const { return rows_begin(k + 1) - rows_begin(k); }
  int32_t columns(int32_t k) const { return columns_begin(k + 1) - columns_begin(k); }
  double operator()(int32_t row, int32_t column) const {
    return elements_[at(row) * at(n_ + 1) + at(column)];
  }

  std::vector<int32_t> states(int32_t k) const {
    return {parts_.states.begin() + rows_begin(k), parts_.states.begin() + rows_begin(k + 1)};
  }

 private:
  int32_t n_;
  Components parts_;
  std::vector<double> elements_;
};

// What each part contributes to the products; of the input c alone, of the output b.
struct Factors {
  std::vector<double> b;
  std::vector<double> c;
  double d = 1.0;
};

struct Position {
  int32_t row;
  int32_t column;
};

// The strongest element that ties a part to the next one.
Position strongest_link(const SystemMatrix &s, int32_t k) {
  Position strongest{s.rows_begin(k + 1), s.columns_begin(k)};
  for (int32_t row = s.rows_begin(k + 1); row < s.rows_begin(k + 2); ++row)
    for (int32_t column = s.columns_begin(k); column < s.columns_begin(k + 1); ++column)
      if (std::abs(s(row, column)) > std::abs(s(strongest.row, strongest.column)))
        strongest = {row, column};
  return strongest;
}

// The factors as neighbours show them. A series has them everywhere else, too.
std::vector<Factors> factors_of(const SystemMatrix &s) {
  const int32_t output = s.sections() + 1;
  std::vector<Factors> factors(at(output + 1));
  factors[0].c = {1.0};
  for (int32_t row = 0; row < s.rows(1); ++row) factors[1].b.push_back(s(row, 0));
  Position before{0, 0};
  double before_c = 1.0;
  for (int32_t k = 1; k < output; ++k) {
    const Position link = strongest_link(s, k);
    for (int32_t column = 0; column < s.columns(k); ++column)
      factors[at(k)].c.push_back(s(link.row, s.columns_begin(k) + column));
    for (int32_t row = 0; row < s.rows(k + 1); ++row)
      factors[at(k + 1)].b.push_back(s(s.rows_begin(k + 1) + row, link.column) /
                                     s(link.row, link.column));
    factors[at(k)].d = s(link.row, before.column) / before_c;
    before = link;
    before_c = s(link.row, link.column);
  }
  return factors;
}

// Whether the elements that tie part r to part s are b_s d c_r. Not, if a number is none.
bool is_tied(const SystemMatrix &m, int32_t r, const std::vector<double> &c, double d, int32_t s,
             const std::vector<double> &b) {
  for (int32_t row = 0; row < m.rows(s); ++row) {
    for (int32_t column = 0; column < m.columns(r); ++column) {
      const double expected = b[at(row)] * (d * c[at(column)]);
      const double error = m(m.rows_begin(s) + row, m.columns_begin(r) + column) - expected;
      const double allowed = rounding * (s - r) * std::abs(expected);
      if (!(std::abs(error) <= allowed && std::isfinite(allowed))) return false;
    }
  }
  return true;
}

bool is_series(const SystemMatrix &m, const std::vector<Factors> &factors) {
  for (int32_t s = 1; s <= m.sections() + 1; ++s) {
    double through = 1.0;
    for (int32_t r = s - 1; r >= 0; --r) {
      if (!is_tied(m, r, factors[at(r)].c, through, s, factors[at(s)].b)) return false;
      through *= factors[at(r)].d;
    }
  }
  return true;
}

Section section(const SystemMatrix &s, int32_t k, const Factors &factors) {
  Section section{s.states(k), {}};
  const int32_t n = s.rows(k);
  matrix64_resize(section.model->a, n, n);
  matrix64_resize(section.model->b, 1, n);
  matrix64_resize(section.model->c, n, 1);
  matrix64_resize(section.model->d, 1, 1);
  for (int32_t row = 0; row < n; ++row)
    for (int32_t column = 0; column < n; ++column)
      matrix64_set(section.model->a, column, row,
                   s(s.rows_begin(k) + row, s.columns_begin(k) + column));
  std::copy(factors.b.begin(), factors.b.end(), section.model->b->data);
  std::copy(factors.c.begin(), factors.c.end(), section.model->c->data);
  section.model->d->data[0] = factors.d;
  return section;
}

void put_own_states(const Section &section, _matrix64 *a) {
  const auto n = static_cast<int32_t>(section.states.size());
  for (int32_t row = 0; row < n; ++row)
    for (int32_t column = 0; column < n; ++column)
      matrix64_set(a, section.states[at(column)], section.states[at(row)],
                   matrix64_get(section.model->a, column, row));
}

// What a section gets of an earlier one's states.
void put_tie(const Section &before, double through, const Section &section, _matrix64 *a) {
  for (std::size_t row = 0; row < section.states.size(); ++row)
    for (std::size_t column = 0; column < before.states.size(); ++column)
      matrix64_set(a, before.states[column], section.states[row],
                   section.model->b->data[row] * (through * before.model->c->data[column]));
}

}  // namespace

Series sections_of(const _statespace *ss) {
  const SystemMatrix s(ss);
  if (s.sections() < 2) return {};
  const std::vector<Factors> factors = factors_of(s);
  if (!is_series(s, factors)) return {};
  Series series;
  series.reserve(at(s.sections()));
  for (int32_t k = 1; k <= s.sections(); ++k) series.push_back(section(s, k, factors[at(k)]));
  return series;
}

void connect(const Series &series, _statespace *ss) {
  int32_t n = 0;
  for (const Section &section : series) n += section.model->a->rows;
  matrix64_resize(ss->a, n, n);
  matrix64_resize(ss->b, 1, n);
  matrix64_resize(ss->c, n, 1);
  matrix64_resize(ss->d, 1, 1);
  matrix64_clear(ss->a);
  for (auto section = series.begin(); section != series.end(); ++section) {
    put_own_states(*section, ss->a);
    double through = 1.0;
    for (auto before = section; before-- != series.begin();) {
      put_tie(*before, through, *section, ss->a);
      through *= before->model->d->data[0];
    }
    for (std::size_t i = 0; i < section->states.size(); ++i)
      ss->b->data[section->states[i]] = section->model->b->data[i] * through;
  }
  double through = 1.0;
  for (auto before = series.end(); before-- != series.begin();) {
    for (std::size_t i = 0; i < before->states.size(); ++i)
      ss->c->data[before->states[i]] = through * before->model->c->data[i];
    through *= before->model->d->data[0];
  }
  ss->d->data[0] = through;
}

}  // namespace filtermath
