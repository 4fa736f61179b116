// The forms of a filter, and roots.
#include "analysis/filter.h"

#include <gmock/gmock.h>

namespace {

using namespace analysis;

TEST(Roots, OfSectionsAreTheSectionsRoots) {
  const Roots roots =
      roots_of({{2, 0, 2, -0.5, 0.0625}, {3, 6, 0, -0.25, 0}, {0, 1, -0.5, 0, 0.25}});
  EXPECT_THAT(roots.zeros,
              testing::ElementsAre(Complex(0, 1), Complex(0, -1), Complex(-2), Complex(0.5)));
  EXPECT_THAT(roots.poles, testing::ElementsAre(Complex(0.25), Complex(0.25), Complex(0.25),
                                                Complex(0, 0.5), Complex(0, -0.5)));
  EXPECT_EQ(roots.gain, 6.0);
}

TEST(FlatLists, AreReadOrRefused) {
  EXPECT_THAT(roots_from_list({1, 2, 3, 4}), testing::ElementsAre(Complex(1, 2), Complex(3, 4)));
  EXPECT_THROW(roots_from_list({1, 2, 3}), std::invalid_argument);
  const Sections sections = sections_from_list({1, 2, 3, 4, 5});
  ASSERT_EQ(sections.size(), 1U);
  EXPECT_EQ(sections[0].a2, 5.0);
  EXPECT_THROW(sections_from_list({1, 2, 3, 4}), std::invalid_argument);
}

TEST(Roots, ThatNearlyCoincideKeepTheirDigits) {
  // p^2 and 4 q agree in all digits that a double has; their difference is 2^-54
  const double x = 1 - 0x1p-26, y = 1 - 0x1p-27;
  EXPECT_THAT(quadratic_roots(-(x + y), x * y), testing::ElementsAre(Complex(y), Complex(x)));
}

}  // namespace

TEST(Roots, OfNumeratorsThatBeginWithNextToNothingAreFinite) {
  for (const double tiny : {1e-17, 1e-140, 1e-160, 1e-300, 1e-320}) {
    const analysis::Roots roots = analysis::roots_of({{tiny, 1.0, 0.5, 0.1, 0.1}});
    ASSERT_FALSE(roots.zeros.empty());
    EXPECT_NEAR(std::abs(roots.zeros.back()), 0.5, 1e-9) << tiny;
    for (const analysis::Complex &zero : roots.zeros)
      EXPECT_TRUE(std::isfinite(zero.real())) << tiny;
    double gain = roots.gain;
    if (roots.zeros.size() == 2) gain *= std::abs(roots.zeros.front());
    EXPECT_NEAR(gain, 1.0, 1e-9) << tiny;
  }
}

TEST(Roots, OfHugeCoefficientsAreThoseOfScaledOnes) {
  for (const double scale : {0x1p500, 0x1p501, 0x1p510}) {
    const std::vector<analysis::Complex> roots =
        analysis::quadratic_roots(-5 * scale, 6 * scale * scale);
    EXPECT_EQ(roots[0], analysis::Complex(3 * scale));
    EXPECT_EQ(roots[1], analysis::Complex(2 * scale));
  }
}
