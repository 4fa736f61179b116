#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

Values denominator(const Model &ss) {
  Flat den;
  filtermath_ss2coefs(ss.get(), nullptr, nullptr, &den.data, &den.count);
  return den.values();
}

TEST(Denominator, HasOneCoefficientMoreThanStatesAndBeginsWithOne) {
  for (int n = 1; n <= 8; ++n) {
    const Model lowpass = realised(butterworth(n));
    filtermath_bilinear(lowpass.get(), 2.0);
    const Values den = denominator(lowpass);
    ASSERT_EQ(den.size(), static_cast<std::size_t>(n + 1));
    EXPECT_EQ(den[0], 1.0);
  }
}

TEST(Denominator, OfABandResponseHasTwiceTheOrderAndOne) {
  for (int n = 1; n <= 8; ++n) {
    const Model bandpass = realised(butterworth(n));
    filtermath_lp2bp(bandpass.get(), 1.0, 0.5);
    filtermath_bilinear(bandpass.get(), 2.0);
    const Model bandstop = realised(butterworth(n));
    filtermath_lp2bs(bandstop.get(), gensym("butterworth"), 1.0, 0.5);
    filtermath_bilinear(bandstop.get(), 2.0);
    for (const Values &den : {denominator(bandpass), denominator(bandstop)}) {
      ASSERT_EQ(den.size(), static_cast<std::size_t>(2 * n + 1));
      EXPECT_EQ(den[0], 1.0);
    }
  }
}

TEST(Denominator, LeavesTheNumeratorSlotsAlone) {
  const Model ss = model({{0.5}}, {1.0}, {1.0}, 0.0);
  double number = 17.0;
  double *num = &number;
  int64_t num_count = 42;
  Flat den;
  filtermath_ss2coefs(ss.get(), &num, &num_count, &den.data, &den.count);
  EXPECT_EQ(num, &number);
  EXPECT_EQ(number, 17.0);
  EXPECT_EQ(num_count, 42);
  EXPECT_EQ(den.values(), (Values{1.0, -0.5}));
}

TEST(Denominator, IsTheDeterminantOfTheModel) {
  const Model ss = model({{0.5, -0.3, 0.1}, {0.2, 0.4, 0.0}, {-0.1, 0.6, -0.2}}, {1.0, 0.0, 0.0},
                         {1.0, 0.0, 0.0}, 0.0);
  const Values den = denominator(ss);
  for (const Complex z : {Complex(1.0, 0.0), Complex(0.0, 1.0), Complex(-2.0, 0.5)})
    EXPECT_TRUE(close(polynomial(den, z), characteristic(ss->a, z), 1e-13));
}

TEST(Denominator, OfWhatIsNotSquareIsEmpty) {
  const Model ss(statespace_new());
  matrix64_resize(ss->a, 3, 2);
  EXPECT_TRUE(denominator(ss).empty());
}

}  // namespace
