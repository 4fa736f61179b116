#include "soundness.h"

#include <gmock/gmock.h>

#include <cmath>

#include "designer/refusal.h"

using layouts::Arithmetic;
using layouts::remarks_on;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(CheckSections, RefusesWhatIsNotAFilter) {
  EXPECT_THROW(layouts::check_sections({}), designer::Refusal);
  EXPECT_THROW(layouts::check_sections({{1.0, INFINITY, 0.0, 0.0, 0.0}}), designer::Refusal);
  EXPECT_THROW(layouts::check_sections({{1.0, 1.0, 0.0, 0.0, NAN}}), designer::Refusal);
  EXPECT_THROW(layouts::check_sections({{1e-310, 0.0, 0.0, 0.0, 0.0}}), designer::Refusal);
  EXPECT_THROW(layouts::check_sections({{0.0, 0.0, 0.0, -0.5, 0.0}}), designer::Refusal);
  EXPECT_NO_THROW(layouts::check_sections({{1e-300, 0.0, 0.0, 0.0, 0.0}}));
}

TEST(CheckSections, NamesTheSection) {
  try {
    layouts::check_sections({{1.0, 0.0, 0.0, 0.0, 0.0}, {1.0, 0.0, 0.0, NAN, 0.0}});
    FAIL() << "a coefficient is not a number";
  } catch (const designer::Refusal &refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("section 2 of this filter"));
  }
}

TEST(RemarksOn, SayThatAFilterIsUnstable) {
  EXPECT_THAT(
      remarks_on({{1.0, 0.0, 0.0, -1.8, 1.01}}, Arithmetic::doubles, layouts::Arrangement::quiet),
      ElementsAre("this filter is not stable"));
  EXPECT_THAT(
      remarks_on({{1.0, 0.0, 0.0, -1.8, 0.99}}, Arithmetic::doubles, layouts::Arrangement::quiet),
      testing::IsEmpty());
}

TEST(RemarksOn, SayWhereASignalLeavesFewDigits) {
  const auto remarks = [](double db, Arithmetic arithmetic) {
    const double gain = std::pow(10.0, db / 20);
    return remarks_on({{gain, 0.0, 0.0, 0.0, 0.0}, {1 / gain, 0.0, 0.0, 0.0, 0.0}}, arithmetic,
                      layouts::Arrangement::published);
  };
  for (const double sign : {-1.0, 1.0}) {
    EXPECT_THAT(remarks(sign * 399.9, Arithmetic::floats), testing::IsEmpty());
    EXPECT_THAT(remarks(sign * 400.1, Arithmetic::floats),
                ElementsAre(HasSubstr("where floats have few")));
    EXPECT_THAT(remarks(sign * 3999.9, Arithmetic::doubles), testing::IsEmpty());
    EXPECT_THAT(remarks(sign * 4000.1, Arithmetic::doubles),
                ElementsAre(HasSubstr("where doubles have few")));
  }
}
