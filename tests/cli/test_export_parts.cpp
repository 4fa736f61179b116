// What an export does to the sections before it writes them.

#include <cmath>

#include "export/gain.h"
#include "export/precision.h"
#include "run_command.h"

using analysis::Section;
using analysis::Sections;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Normalise, RepairsALevelThatIsWrong) {
  // (1 + z^-1)^2 / 4 has the level 1 at DC.
  Sections sections{{3 * 0.25, 3 * 0.5, 3 * 0.25, 0.0, 0.0}};
  EXPECT_NEAR(cli::normalise(sections, {0.0, 0.0, "at DC"}), 1.0 / 3.0, 1e-15);
  EXPECT_NEAR(sections[0].b0 + sections[0].b1 + sections[0].b2, 1.0, 1e-15);
  cli::normalise(sections, {0.0, -20.0, "at DC"});
  EXPECT_NEAR(sections[0].b0 + sections[0].b1 + sections[0].b2, 0.1, 1e-15);
}

TEST(Normalise, RefusesASilentPlace) {
  Sections sections{{1.0, 2.0, 1.0, 0.0, 0.0}};
  try {
    cli::normalise(sections, {1.0, 0.0, "at the Nyquist frequency"});
    FAIL() << "it is silent there";
  } catch (const cli::Refusal &refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("at the Nyquist frequency: it is -inf dB there"));
  }
}

TEST(Reference, ReversedCutoffsHaveTheSameCentre) {
  cli::Published filter;
  filter.topology = "butterworth";
  filter.response = "bandpass";
  filter.samplerate = 2.0;
  filter.cutoffs = {0.25, 0.75};
  const double centre = cli::reference_of(filter, 0.0).w;
  EXPECT_NEAR(centre, 0.5, 1e-15);
  filter.cutoffs = {0.75, 0.25};
  EXPECT_EQ(cli::reference_of(filter, 0.0).w, centre);
}

TEST(Precision, RefusesWhatIsNoFilter) {
  EXPECT_THROW(cli::check_sections({}), cli::Refusal);
  EXPECT_THROW(cli::check_sections({{1.0, INFINITY, 0.0, 0.0, 0.0}}), cli::Refusal);
  EXPECT_THROW(cli::check_sections({{1.0, 1.0, 0.0, 0.0, NAN}}), cli::Refusal);
  EXPECT_THROW(cli::check_sections({{1e-310, 0.0, 0.0, 0.0, 0.0}}), cli::Refusal);
  EXPECT_NO_THROW(cli::check_sections({{1e-300, 0.0, 0.0, 0.0, 0.0}}));
}

TEST(Precision, SaysThatAFilterIsUnstable) {
  cli::Words remarks;
  cli::check_cascade({{1.0, 0.0, 0.0, -1.8, 1.01}}, false, remarks);
  EXPECT_THAT(remarks, ElementsAre("this filter is not stable"));
}

TEST(Precision, SaysWhereASignalLeavesFewDigits) {
  const auto remarks = [](double db, bool floats) {
    const double gain = std::pow(10.0, db / 20);
    cli::Words list;
    cli::check_cascade({{gain, 0.0, 0.0, 0.0, 0.0}, {1 / gain, 0.0, 0.0, 0.0, 0.0}}, floats, list);
    return list;
  };
  for (const double sign : {-1.0, 1.0}) {
    EXPECT_THAT(remarks(sign * 399.9, true), testing::IsEmpty());
    EXPECT_THAT(remarks(sign * 400.1, true), ElementsAre(HasSubstr("where floats have few")));
    EXPECT_THAT(remarks(sign * 3999.9, false), testing::IsEmpty());
    EXPECT_THAT(remarks(sign * 4000.1, false), ElementsAre(HasSubstr("where doubles have few")));
  }
}
