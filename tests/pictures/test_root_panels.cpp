// The panels of the z plane.

#include <gmock/gmock.h>

#include "designed.h"
#include "pictures/root_panels.h"

using pictures::poles_panel;
using pictures::RootPanel;
using pictures::zeros_and_poles_panel;
using testing::IsEmpty;
using testing::SizeIs;
using tests::drawn;

TEST(RootPanels, EveryRootIsThere) {
  const RootPanel panel = zeros_and_poles_panel(
      {drawn("chebyshev-2", "lowpass", 6, {3000}), drawn("chebyshev-2", "lowpass", 4, {3000})});
  ASSERT_THAT(panel.filters, SizeIs(2));
  EXPECT_THAT(panel.filters[0].zeros.x, SizeIs(6));
  EXPECT_THAT(panel.filters[0].poles.x, SizeIs(6));
  EXPECT_THAT(panel.filters[1].poles.x, SizeIs(4));
  EXPECT_THAT(panel.multiplicities, IsEmpty());
}

TEST(RootPanels, TheEnlargedPolesAreThoseAboveTheAxis) {
  const RootPanel panel = poles_panel({drawn("butterworth", "lowpass", 6, {3000})});
  EXPECT_THAT(panel.filters[0].poles.x, SizeIs(3));
  EXPECT_THAT(panel.filters[0].poles.y, testing::Each(testing::Gt(0.0)));
}

TEST(RootPanels, MultiplicitiesOfAllFiltersShareALabelOutsideTheCircle) {
  const RootPanel panel =
      zeros_and_poles_panel({drawn("butterworth", "lowpass", 6, {3000}),
                             drawn("butterworth", "bandpass", 4, {1000, 3000})});
  ASSERT_THAT(panel.multiplicities, SizeIs(2));
  for (const pictures::MultiplicityLabel &label : panel.multiplicities) {
    EXPECT_NEAR(std::abs(label.x), 1.0, 1e-12);
    EXPECT_EQ(label.outward, analysis::Complex(label.x, label.y));
    const std::set<std::size_t> zeros_there =
        label.x < 0.0 ? std::set<std::size_t>{4, 6} : std::set<std::size_t>{4};
    EXPECT_EQ(label.counts, zeros_there);
  }
}

TEST(RootPanels, AFrameShowsWhatIsEnlarged) {
  const pictures::DrawnFilter filter = drawn("butterworth", "lowpass", 6, {3000});
  const RootPanel whole = zeros_and_poles_panel({filter}), enlarged = poles_panel({filter});
  EXPECT_THAT(enlarged.frame.x, IsEmpty());
  ASSERT_THAT(whole.frame.x, SizeIs(5));
  EXPECT_NEAR(whole.frame.x[0], enlarged.real.axis.low, 1e-12);
  EXPECT_NEAR(whole.frame.x[1], enlarged.real.axis.high, 1e-12);
  EXPECT_NEAR(whole.frame.y[0], enlarged.imaginary.axis.low, 1e-12);
  EXPECT_NEAR(whole.frame.y[2], enlarged.imaginary.axis.high, 1e-12);
  // Of a narrow band it would be a dot.
  const RootPanel narrow = zeros_and_poles_panel({drawn("butterworth", "bandpass", 4, {59, 61})});
  EXPECT_GT(narrow.frame.x[1] - narrow.frame.x[0], 0.1);
}

TEST(RootPanels, TheAxesSayWhereTheirRootsLieInThePlane) {
  const pictures::DrawnFilter filter = drawn("butterworth", "bandpass", 4, {59, 61});
  const RootPanel panel = poles_panel({filter});
  ASSERT_GT(panel.unit, 1.0);
  const pictures::Curve &poles = panel.filters[0].poles;
  ASSERT_THAT(poles.x, SizeIs(4));
  for (std::size_t i = 0; i < poles.x.size(); ++i) {
    const analysis::Complex z =
        panel.origin + analysis::Complex(poles.x[i], poles.y[i]) / panel.unit;
    EXPECT_THAT(filter.roots.poles,
                testing::Contains(testing::Truly(
                    [&](const analysis::Complex &pole) { return std::abs(pole - z) < 1e-14; })));
  }
}

TEST(RootPanels, TheTitleSaysWhichPolesAreEnlarged) {
  EXPECT_EQ(poles_panel({drawn("butterworth", "lowpass", 6, {3000})}).title,
            "Poles enlarged, upper half plane");
  EXPECT_EQ(poles_panel({drawn("butterworth", "bandpass", 8, {20, 20000})}).title,
            "Poles enlarged where they crowd");
}
