// Every element that the transformations leave in a model, to the last digit: the
// response alone would not show which of B and C carries a factor, nor a state that
// changed its sign.

#include <gtest/gtest.h>

#include <string_view>

#include "dense_model.h"
#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

constexpr std::size_t most_states = 6;

struct Elements {
  Values a;
  Values b;
  Values c;
  double d;
};

Elements elements(const Model &ss) {
  return {stored(ss->a), stored(ss->b), stored(ss->c), ss->d->data[0]};
}

void expect_elements(const Model &ss, const Elements &expected) {
  const auto n = static_cast<int32_t>(expected.b.size());
  EXPECT_EQ(ss->a->cols, n);
  EXPECT_EQ(ss->b->cols, 1);
  EXPECT_EQ(ss->c->cols, n);
  EXPECT_EQ(stored(ss->a), expected.a);
  EXPECT_EQ(stored(ss->b), expected.b);
  EXPECT_EQ(stored(ss->c), expected.c);
  EXPECT_EQ(ss->d->data[0], expected.d);
}

Values scaled(const Values &values, double factor) {
  Values result;
  for (const double value : values) result.push_back(value * factor);
  return result;
}

/** [block, wo I; -wo I, 0] */
Values tied(const Values &block, std::size_t n, double wo) {
  Values a(4 * n * n);
  for (std::size_t r = 0; r < n; ++r) {
    for (std::size_t k = 0; k < n; ++k) a[r * 2 * n + k] = block[r * n + k];
    a[r * 2 * n + n + r] = wo;
    a[(n + r) * 2 * n + r] = -wo;
  }
  return a;
}

Values padded(Values values) {
  values.resize(2 * values.size(), 0.0);
  return values;
}

Values inverse(const Model &ss) {
  const Matrix inverted(matrix64_new());
  EXPECT_EQ(matrix64_inverse(inverted.get(), ss->a), 0);
  return stored(inverted.get());
}

double dot(const Values &row, const Values &column) {
  double sum = 0.0;
  for (std::size_t k = 0; k < row.size(); ++k) sum += row[k] * column[k];
  return sum;
}

Values row_times(const Values &row, const Values &square) {
  const std::size_t n = row.size();
  Values result;
  for (std::size_t column = 0; column < n; ++column) {
    Values elements;
    for (std::size_t k = 0; k < n; ++k) elements.push_back(square[k * n + column]);
    result.push_back(dot(row, elements));
  }
  return result;
}

Values times_column(const Values &square, const Values &column) {
  const auto n = static_cast<std::ptrdiff_t>(column.size());
  Values result;
  for (auto row = square.begin(); row != square.end(); row += n)
    result.push_back(dot(Values(row, row + n), column));
  return result;
}

// Centres and widths whose products and quotients are all rounded.
struct Band {
  double wo;
  double bw;
};
constexpr Band bands[] = {{1.3, 0.7}, {0.37, 2.9}, {11.7, 0.013}, {0.9, -0.3}};

TEST(LowpassElements, AreThoseOfTheModelTimesTheEdge) {
  for (std::size_t n = 1; n <= most_states; ++n) {
    for (const double wo : {1.3, 0.37}) {
      const Model ss = dense(n);
      Elements expected = elements(ss);
      expected.a = scaled(expected.a, wo);
      expected.b = scaled(expected.b, wo);
      filtermath_lp2lp(ss.get(), wo);
      expect_elements(ss, expected);
    }
  }
}

TEST(HighpassElements, AreThoseOfTheInverse) {
  for (std::size_t n = 1; n <= most_states; ++n) {
    for (const double wo : {1.3, 0.37}) {
      const Model ss = dense(n);
      const Elements before = elements(ss);
      const Values inverted = inverse(ss);
      const Values c = row_times(before.c, inverted);
      filtermath_lp2hp(ss.get(), wo);
      expect_elements(ss, {scaled(inverted, wo), scaled(times_column(inverted, before.b), -wo), c,
                           before.d - dot(c, before.b)});
    }
  }
}

TEST(BandpassElements, AreTheModelTimesTheWidthTiedToASecondStateEach) {
  for (std::size_t n = 1; n <= most_states; ++n) {
    for (const Band &band : bands) {
      const Model ss = dense(n);
      const Elements before = elements(ss);
      const double q = band.bw / band.wo;
      filtermath_lp2bp(ss.get(), band.wo, band.bw);
      expect_elements(ss,
                      {tied(scaled(scaled(before.a, q), band.wo), n, band.wo),
                       padded(scaled(scaled(before.b, q), band.wo)), padded(before.c), before.d});
    }
  }
}

TEST(BandstopElements, AreTheInverseTimesTheWidthTiedToASecondStateEach) {
  for (const char *family : {"butterworth", "chebyshev-1", "chebyshev-2"}) {
    for (std::size_t n = 1; n <= most_states; ++n) {
      for (const Band &band : bands) {
        const Model ss = dense(n);
        const Elements before = elements(ss);
        const Values inverted = inverse(ss);
        const Values c = row_times(before.c, inverted);
        const double through = n == 4 ? dot(c, before.b) : c[0];
        filtermath_lp2bs(ss.get(), gensym(family), band.wo, band.bw);
        expect_elements(ss, {tied(scaled(inverted, band.bw), n, band.wo),
                             padded(scaled(times_column(inverted, before.b), -band.bw)), padded(c),
                             std::string_view(family) == "chebyshev-2" ? 1.0 : before.d - through});
      }
    }
  }
}

// Otherwise the tests above could not distinguish one order of the factors from another.
TEST(BandElements, WouldBeOthersInAnyOtherOrderOfTheFactors) {
  const Model ss = dense(most_states);
  const Elements before = elements(ss);
  const Values inverted = inverse(ss);
  const Values product = times_column(inverted, before.b);
  int others[6] = {};  // bands in which an element is another
  for (const auto &[wo, bw] : bands) {
    const double q = bw / wo;
    const Values a = scaled(scaled(before.a, q), wo);
    others[0] += a != scaled(before.a, bw) ? 1 : 0;
    others[1] += a != scaled(scaled(before.a, wo), q) ? 1 : 0;
    const Values b = scaled(scaled(before.b, q), wo);
    others[2] += b != scaled(before.b, bw) ? 1 : 0;
    others[3] += b != scaled(scaled(before.b, wo), q) ? 1 : 0;
    const Values stop = scaled(product, -bw);
    others[4] += stop != times_column(scaled(inverted, -bw), before.b) ? 1 : 0;
    others[5] += stop != times_column(inverted, scaled(before.b, -bw)) ? 1 : 0;
  }
  for (const int count : others) EXPECT_GT(count, 0);
}

// Families are compared by identity: the text of a symbol that nobody interned is not
// looked at.
TEST(BandstopElements, OfAFamilyThatOnlyReadsChebyshev2AreThoseOfAnyOther) {
  t_symbol lookalike{"chebyshev-2"};
  for (const std::size_t n : {std::size_t{3}, std::size_t{4}}) {
    const Model ss = dense(n);
    const Model other = dense(n);
    filtermath_lp2bs(ss.get(), &lookalike, 1.3, 0.7);
    filtermath_lp2bs(other.get(), gensym("another"), 1.3, 0.7);
    EXPECT_NE(ss->d->data[0], 1.0);
    expect_elements(ss, elements(other));
  }
}

}  // namespace
