// The sections' levels make up that of the filter.

#include "pictures/section_levels.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "designed.h"
#include "pictures/ranges.h"

using pictures::Curve;
using pictures::Detail;
using pictures::section_level_curves;
using pictures::whole_axis;
using testing::SizeIs;

TEST(SectionLevels, AddUpToTheLevelOfTheFilter) {
  const auto filter = tests::drawn("chebyshev-1", "bandpass", 6, {1000, 2000});
  const auto axis = whole_axis({filter}, pictures::Scale::logarithmic);
  for (const Detail detail : {Detail::full, Detail::live}) {
    const std::vector<Curve> curves = section_level_curves(filter, axis, detail);
    ASSERT_THAT(curves, SizeIs(filter.sections.size()));
    double sum = 0.0;
    for (const Curve &curve : curves) {
      const auto at = std::lower_bound(curve.x.begin(), curve.x.end(), 1000 * (1 - 1e-12));
      EXPECT_NEAR(*at, 1000, 1e-9);
      sum += curve.y[static_cast<std::size_t>(at - curve.x.begin())];
    }
    EXPECT_NEAR(sum, tests::level_at(filter, 1000), 1e-6);
  }
}

TEST(SectionLevels, OfASilentFilterAreNone) {
  const auto silent = tests::drawn("butterworth", "lowpass", 200, {20});
  EXPECT_EQ(section_level_curves(silent, {1, 1000, pictures::Scale::logarithmic}).empty(),
            silent.sections.empty());
}
