// Peaks within the cascade.
#include "analysis/cascade_peaks.h"

#include <gtest/gtest.h>

#include "analysis/response.h"
#include "data.h"

namespace {

using namespace analysis;

TEST(CascadePeaks, OfSectionsAreThoseOfTheClosedFormula) {
  for (const data::Case &one : data::cases()) {
    const std::vector<double> expected = one.column("section_peaks");
    const std::vector<Peak> found = section_peaks(one.sections);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i].db, expected[i], 1e-9) << one.name << ", section " << i;
  }
}

TEST(CascadePeaks, OfTheRunningProductAreThoseOfADenseSearch) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    if (!one.record.contains("running_peaks") || one.cutoffs[0] < 0.01) continue;
    const std::vector<double> expected = one.column("running_peaks");
    const std::vector<Peak> found = running_peaks(one.sections);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i].db, expected[i], 1e-6) << one.name << ", " << i + 1 << " sections";
    ++checked;
  }
  EXPECT_GE(checked, 7U);
}

TEST(CascadePeaks, OfTheWholeProductAreThePassband) {
  for (const data::Case &one : data::cases()) {
    const std::vector<Peak> found = running_peaks(one.sections);
    EXPECT_NEAR(found.back().db - one.lift, 0.0, one.order > 8 ? 1e-4 : 1e-8) << one.name;
    for (std::size_t i = 0; i < found.size(); i += 17) {
      const Sections first(one.sections.begin(),
                           one.sections.begin() + static_cast<std::ptrdiff_t>(i + 1));
      EXPECT_NEAR(level_db(first, found[i].w), found[i].db, 1e-8) << one.name;
    }
  }
}

}  // namespace
