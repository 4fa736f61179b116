// Which cascades a signal may be filtered by.

#include <limits>

#include <gmock/gmock.h>

#include "designer/refusal.h"
#include "designer/runnable.h"

namespace {

using analysis::Section;
using analysis::Sections;

void require(const Sections &sections) { designer::require_runnable(sections, "the doctor"); }

}  // namespace

TEST(Runnable, PolesInsideTheCircleRun) {
  EXPECT_NO_THROW(require({{1, 2, 1, -1.8, 0.81}, {1, 0, 0, 0.5, 0}}));
  EXPECT_NO_THROW(require({{1, 0, 0, 0, 0.999999}}));
}

TEST(Runnable, PolesOutsideOrOnTheCircleAreRefusedAndTheAdviserIsNamed) {
  for (const double squared_radius : {1.0, 1.000001})
    EXPECT_THAT(
        [&] {
          require({{1, 0, 0, 0.5, 0}, {1, 0, 0, 0, squared_radius}});
        },
        testing::Throws<designer::Refusal>(testing::Property(
            &designer::Refusal::what, testing::AllOf(testing::HasSubstr("not stable"),
                                                     testing::HasSubstr("the doctor says")))))
        << squared_radius;
}

TEST(Runnable, EachCoefficientHasToBeFinite) {
  const Section sound{1, 0.5, 0.25, 0.125, 0.0625};
  for (double Section::*const one :
       {&Section::b0, &Section::b1, &Section::b2, &Section::a1, &Section::a2})
    for (const double value :
         {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
      Section broken = sound;
      broken.*one = value;
      EXPECT_THAT(
          [&] {
            require({sound, broken});
          },
          testing::Throws<designer::Refusal>(
              testing::Property(&designer::Refusal::what, testing::HasSubstr("not finite"))));
    }
}
