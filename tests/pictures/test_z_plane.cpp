// Views of the z plane hold the roots, and their axes say what they count.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "designed.h"
#include "pictures/z_plane.h"

using analysis::Complex;
using pictures::DrawnFilter;
using pictures::Square;
using pictures::ZPlaneView;
using testing::SizeIs;
using tests::drawn;

TEST(ZPlane, PolesBelowTheAxisAloneHaveASquare) {
  DrawnFilter filter = drawn("butterworth", "lowpass", 2, {3000});
  const Square above = pictures::around_poles({filter});
  std::erase_if(filter.roots.poles, [](const auto &pole) { return pole.imag() > 0.0; });
  ASSERT_THAT(filter.roots.poles, SizeIs(1));
  const Square below = pictures::around_poles({filter});
  EXPECT_GT(below.half, 0.0);
  EXPECT_EQ(below.half, above.half);
  EXPECT_EQ(below.centre, above.centre);
}

TEST(ZPlane, TheSquareAroundTheCircleHoldsAllRoots) {
  const std::vector<DrawnFilter> filters{drawn("butterworth", "bandpass", 3, {3000, 1000}),
                                         drawn("chebyshev-2", "lowpass", 7, {500})};
  const Square whole = pictures::around_circle(filters);
  EXPECT_TRUE(whole.contains({-1.0, 1.0}));
  for (const DrawnFilter &filter : filters)
    for (const auto *roots : {&filter.roots.zeros, &filter.roots.poles})
      for (const Complex &root : *roots) EXPECT_TRUE(whole.contains(root)) << root;
}

TEST(ZPlane, PolesThatAreApartInOneSquareAreAllInIt) {
  for (const DrawnFilter &filter :
       {drawn("butterworth", "lowpass", 8, {3000}), drawn("chebyshev-1", "highpass", 7, {100}),
        drawn("chebyshev-2", "bandstop", 40, {1000, 3000})}) {
    const Square square = pictures::around_poles({filter});
    EXPECT_LT(square.half, 0.25);
    for (const Complex &pole : filter.roots.poles)
      EXPECT_TRUE(square.contains({pole.real(), std::fabs(pole.imag())})) << pole;
  }
}

// Those of the low edge lie within 0.003 of 1, those of the high one 1.6 away.
TEST(ZPlane, OfTwoGroupsTheDenserIsEnlarged) {
  const Square square = pictures::around_poles({drawn("butterworth", "bandpass", 8, {20, 20000})});
  EXPECT_LT(square.half, 0.003);
  EXPECT_LT(std::abs(square.centre - 1.0), 0.005);
}

// Here one square would show all poles, and those at 1 as a single blot.
TEST(ZPlane, PolesThatCoverOneAnotherAreEnlarged) {
  designer::Settings eeg = tests::settings("butterworth", "bandpass", 10, {0.5, 40.0});
  eeg.set("samplerate", {t_long{250}});
  const Square square = pictures::around_poles({drawn(eeg)});
  EXPECT_LT(square.half, 0.02);
  EXPECT_LT(std::abs(square.centre - 1.0), 0.03);
}

// No gap is wide here: the distances between poles grow step by step.
TEST(ZPlane, ACrowdWithinAnEvenRowIsEnlarged) {
  const Square square =
      pictures::around_poles({drawn("chebyshev-2", "bandpass", 200, {300, 3400})});
  EXPECT_LT(square.half, 0.05);
  EXPECT_TRUE(square.contains({1.0, 0.02}));
}

TEST(ZPlane, AnEnlargementIsNeverTheWholeCircle) {
  for (const DrawnFilter &filter : {drawn("chebyshev-1", "bandpass", 7, {2000, 20000}),
                                    drawn("butterworth", "lowpass", 200, {12000}),
                                    drawn("butterworth", "bandpass", 1, {20, 20000}),
                                    drawn("chebyshev-2", "bandstop", 9, {500, 23000})}) {
    const Square square = pictures::around_poles({filter});
    EXPECT_LE(square.half, 0.5);
    EXPECT_TRUE(
        std::any_of(filter.roots.poles.begin(), filter.roots.poles.end(), [&](const Complex &pole) {
          return square.contains({pole.real(), std::fabs(pole.imag())});
        }));
  }
}

// Poles of one filter beside those of another are no crowd.
TEST(ZPlane, FiltersThatNearlyAgreeAreEnlargedAsOneIs) {
  const DrawnFilter filter = drawn("butterworth", "lowpass", 4, {3000});
  const DrawnFilter twin = drawn("butterworth", "lowpass", 4, {3001});
  EXPECT_NEAR(pictures::around_poles({filter, twin}).half, pictures::around_poles({filter}).half,
              1e-3);
}

TEST(ZPlane, ALargeSquareCountsAsThePlaneDoes) {
  const ZPlaneView view({{0.0, 0.0}, 1.35});
  EXPECT_EQ(view.real_label(), "Re z");
  EXPECT_EQ(view.imaginary_label(), "Im z");
  EXPECT_EQ(view.seen({0.25, -0.5}), Complex(0.25, -0.5));
}

TEST(ZPlane, ASmallSquareCountsFromARoundNumber) {
  const ZPlaneView view({{0.9982, 0.0004}, 0.002});
  EXPECT_EQ(view.real_label(), "(Re z \u2212 0.998) \u00b7 10\u00b3");
  EXPECT_EQ(view.imaginary_label(), "Im z \u00b7 10\u00b3");
  EXPECT_NEAR(view.seen({0.9990, 0.0005}).real(), 1.0, 1e-9);
  EXPECT_NEAR(view.seen({0.9990, 0.0005}).imag(), 0.5, 1e-9);
  EXPECT_NEAR(view.real_axis().low, -1.8, 1e-9);
  EXPECT_NEAR(view.real_axis().high, 2.2, 1e-9);
  EXPECT_EQ(ZPlaneView({{-0.5, 0.0}, 0.01}).real_label(), "(Re z + 0.50) \u00b7 10\u00b2");
}

// Every point of the arc is on the circle, and the square is crossed from side to side.
TEST(ZPlane, TheArcIsOnTheCircle) {
  const Square square{{0.999, 0.001}, 0.003};
  const ZPlaneView view(square);
  const pictures::Curve arc = view.unit_circle();
  std::size_t inside = 0;
  for (std::size_t i = 0; i < arc.x.size(); ++i) {
    const Complex z = Complex(arc.x[i], arc.y[i]) * 1e-3 + Complex(0.999, 0.001);
    EXPECT_NEAR(std::abs(z), 1.0, 1e-12);
    if (square.contains(z)) ++inside;
  }
  EXPECT_GT(inside, 50U);
  EXPECT_LT(inside, arc.x.size());
}
