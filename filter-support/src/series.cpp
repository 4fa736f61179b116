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
#include <utility>

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
  SystemMatrix(const _statespace *ss, const Components &parts, Scratch *memory)
      : n_(ss->a->rows), parts_(parts), elements_(memory) {
    elements_.reserve(at(n_ + 1) * at(n_ + 1));
    for (const int32_t row : parts_.states) {
      elements_.push_back(ss->b->data[row]);
      for (const int32_t column : parts_.states)
        elements_.push_back(matrix64_get(ss->a, column, row));
    }
    elements_.push_back(ss->d->data[0]);
    for (const int32_t column : parts_.states) elements_.push_back(ss->c->data[column]);
  }

  int32_t sections() const { return static_cast<int32_t>(parts_.begins.size()) - 1; }
  int32_t rows_begin(int32_t k) const {
    return k == sections() + 2 ? n_ + 1 : parts_.begins[at(k - 1)];
  }
  int32_t columns_begin(int32_t k) const { return k == 0 ? 0 : rows_begin(k) + 1; }
  double operator()(int32_t row, int32_t column) const {
    return elements_[at(row) * at(n_ + 1) + at(column)];
  }

 private:
  int32_t n_;
  const Components &parts_;
  List<double> elements_;
};

// What each part contributes to the products: the b of each row, the c of each column and
// the d of each part. Of the input only c is used, of the output only b.
struct Factors {
  Factors(std::size_t states, std::size_t parts, Scratch *memory)
      : b(states + 1, memory), c(states + 1, memory), d(parts, 1.0, memory) {}

  List<double> b;
  List<double> c;
  List<double> d;
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
Factors factors_of(const SystemMatrix &s, Scratch *memory) {
  const int32_t output = s.sections() + 1;
  Factors factors(at(s.rows_begin(output)), at(output + 1), memory);
  factors.c[0] = 1.0;
  for (int32_t row = 0; row < s.rows_begin(2); ++row) factors.b[at(row)] = s(row, 0);
  Position before{0, 0};
  double before_c = 1.0;
  for (int32_t k = 1; k < output; ++k) {
    const Position link = strongest_link(s, k);
    for (int32_t column = s.columns_begin(k); column < s.columns_begin(k + 1); ++column)
      factors.c[at(column)] = s(link.row, column);
    for (int32_t row = s.rows_begin(k + 1); row < s.rows_begin(k + 2); ++row)
      factors.b[at(row)] = s(row, link.column) / s(link.row, link.column);
    factors.d[at(k)] = s(link.row, before.column) / before_c;
    before = link;
    before_c = s(link.row, link.column);
  }
  return factors;
}

// Whether the elements that tie part r to part s are b_s d c_r. False if any of them, or any
// factor, is NaN or infinite.
bool is_tied(const SystemMatrix &m, const Factors &factors, int32_t r, double d, int32_t s) {
  for (int32_t row = m.rows_begin(s); row < m.rows_begin(s + 1); ++row) {
    for (int32_t column = m.columns_begin(r); column < m.columns_begin(r + 1); ++column) {
      const double expected = factors.b[at(row)] * (d * factors.c[at(column)]);
      const double error = m(row, column) - expected;
      const double allowed = rounding * (s - r) * std::abs(expected);
      if (!(std::abs(error) <= allowed && std::isfinite(allowed))) return false;
    }
  }
  return true;
}

bool is_series(const SystemMatrix &m, const Factors &factors) {
  for (int32_t s = 1; s <= m.sections() + 1; ++s) {
    double through = 1.0;
    for (int32_t r = s - 1; r >= 0; --r) {
      if (!is_tied(m, factors, r, through, s)) return false;
      through *= factors.d[at(r)];
    }
  }
  return true;
}

void fill(const Section &section, const SystemMatrix &s, int32_t k, const Factors &factors) {
  const int32_t row_begin = s.rows_begin(k);
  const int32_t column_begin = s.columns_begin(k);
  double *a = section.a;
  for (int32_t row = 0; row < section.n; ++row)
    for (int32_t column = 0; column < section.n; ++column)
      *a++ = s(row_begin + row, column_begin + column);
  std::copy_n(&factors.b[at(row_begin)], section.n, section.b);
  std::copy_n(&factors.c[at(column_begin)], section.n, section.c);
  *section.d = factors.d[at(k)];
}

void put_own_states(const Section &section, _matrix64 *a) {
  const double *element = section.a;
  for (int32_t row = 0; row < section.n; ++row)
    for (int32_t column = 0; column < section.n; ++column)
      matrix64_set(a, section.states[column], section.states[row], *element++);
}

// What a section gets of an earlier one's states.
void put_tie(const Section &before, double through, const Section &section, _matrix64 *a) {
  for (int32_t row = 0; row < section.n; ++row)
    for (int32_t column = 0; column < before.n; ++column)
      matrix64_set(a, before.states[column], section.states[row],
                   section.b[row] * (through * before.c[column]));
}

void reshape(_statespace *ss, int32_t n) {
  matrix64_resize(ss->a, n, n);
  matrix64_resize(ss->b, 1, n);
  matrix64_resize(ss->c, n, 1);
  matrix64_resize(ss->d, 1, 1);
}

}  // namespace

Series::Series(Components parts, Scratch *memory)
    : parts_(std::move(parts)), numbers_(memory), sections_(memory) {
  const std::size_t count = parts_.begins.size() - 1;
  std::size_t size = count;
  for (std::size_t k = 0; k < count; ++k) {
    const std::size_t n = at(parts_.begins[k + 1] - parts_.begins[k]);
    size += n * n + 2 * n;
  }
  numbers_.resize(size);
  sections_.reserve(count);
  double *next = numbers_.data();
  for (std::size_t k = 0; k < count; ++k) {
    const int32_t n = parts_.begins[k + 1] - parts_.begins[k];
    const std::ptrdiff_t row = n;
    double *const b = next + row * row;
    sections_.push_back({n, &parts_.states[at(parts_.begins[k])], next, b, b + row, b + 2 * row});
    next = b + 2 * row + 1;
  }
}

Series sections_of(const _statespace *ss, Scratch *memory) {
  Series series(components(ss->a->data, ss->a->rows, memory), memory);
  if (series.sections().size() < 2) return {};
  Scratch scratch;
  const SystemMatrix s(ss, series.components(), &scratch);
  const Factors factors = factors_of(s, &scratch);
  if (!is_series(s, factors)) return {};
  int32_t k = 0;
  for (const Section &section : series.sections()) fill(section, s, ++k, factors);
  return series;
}

void load(const Section &section, _statespace *ss) {
  reshape(ss, section.n);
  std::copy_n(section.a, section.n * section.n, ss->a->data);
  std::copy_n(section.b, section.n, ss->b->data);
  std::copy_n(section.c, section.n, ss->c->data);
  ss->d->data[0] = *section.d;
}

void store(const _statespace *ss, const Section &section) {
  std::copy_n(ss->a->data, section.n * section.n, section.a);
  std::copy_n(ss->b->data, section.n, section.b);
  std::copy_n(ss->c->data, section.n, section.c);
  *section.d = ss->d->data[0];
}

void connect(const Series &series, _statespace *ss) {
  const List<Section> &sections = series.sections();
  int32_t n = 0;
  for (const Section &section : sections) n += section.n;
  reshape(ss, n);
  matrix64_clear(ss->a);
  for (auto section = sections.begin(); section != sections.end(); ++section) {
    put_own_states(*section, ss->a);
    double through = 1.0;
    for (auto before = section; before-- != sections.begin();) {
      put_tie(*before, through, *section, ss->a);
      through *= *before->d;
    }
    for (int32_t i = 0; i < section->n; ++i)
      ss->b->data[section->states[i]] = section->b[i] * through;
  }
  double through = 1.0;
  for (auto before = sections.end(); before-- != sections.begin();) {
    for (int32_t i = 0; i < before->n; ++i) ss->c->data[before->states[i]] = through * before->c[i];
    through *= *before->d;
  }
  ss->d->data[0] = through;
}

}  // namespace filtermath
