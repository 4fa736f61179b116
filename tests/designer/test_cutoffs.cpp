// Cutoffs as they were asked for, and as they are used.
#include "designer/cutoffs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "../designer_with_module.h"
#include "designer/published_filter.h"
#include "designer/refusal.h"
#include "designer/title.h"

namespace {

using designer::Design;
using designer::Settings;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

Design designed(const Settings &settings) { return tests::designer_with_module().design(settings); }

designer::Values word(const char *text) { return {std::string(text)}; }

std::string refusal(const Settings &settings) {
  try {
    designed(settings);
  } catch (const designer::Refusal &found) {
    return found.what();
  }
  return "";
}

}  // namespace

TEST(Cutoffs, AreThoseOfTheFilterAlsoWhereTheyAreClipped) {
  const Design design = designed(
      {{"topology", word("butterworth")}, {"frequency", {5000.0}}, {"samplerate", {t_long{8000}}}});
  EXPECT_THAT(design.remarks, Contains(HasSubstr("a cutoff of 5000 Hz is too high at a sample rate "
                                                 "of 8000 Hz: 3999.6 Hz is used")));
  EXPECT_THAT(designer::title(design), HasSubstr("cutoff 3999.6 Hz, at 8000 Hz"));
}

TEST(Cutoffs, AreNamedInTheirUnit) {
  const Design design =
      designed({{"units", word("normalized")}, {"frequency", {1e-5}}, {"order", word("2")}});
  EXPECT_THAT(design.remarks, Contains(HasSubstr("1e-05 of Nyquist is too low")));
  EXPECT_THAT(designer::title(design), HasSubstr("cutoff 0.0001 of Nyquist"));
  const Design band = designed({{"response", word("bandpass")}, {"frequency", {1.0, 3400.0}}});
  EXPECT_THAT(designer::title(band), HasSubstr("cutoffs 2.4 and 3400 Hz"));
}

TEST(Cutoffs, InRangeAreNotChanged) {
  for (const double cutoff : {2.4, 23997.6, 1000.0 / 3.0}) {
    const Design design = designed({{"frequency", {cutoff}}});
    EXPECT_THAT(design.remarks, IsEmpty()) << cutoff;
    const auto cutoffs = designer::cutoffs_in(design.settings, design.samplerate);
    EXPECT_FALSE(cutoffs.front().is_clipped()) << cutoff;
  }
}

// A box keeps the cutoffs that it had: what it would publish is another filter.
TEST(Cutoffs, InRadiansAreRefusedWithTheFractionsThatTheyAre) {
  const std::string said = refusal({{"units", word("radians")}, {"frequency", {0.5}}});
  const std::string before = "radians divided by pi: ";
  ASSERT_THAT(said, HasSubstr(before));
  EXPECT_NEAR(std::stod(said.substr(said.find(before) + before.size())), 0.5 / std::numbers::pi,
              1e-9);
  EXPECT_THAT(refusal({{"units", word("radians")}, {"frequency", {3000.0}}}),
              testing::EndsWith("radians divided by pi"));
  EXPECT_THAT(refusal({{"units", word("radians")}}), HasSubstr("not supported"));
}

TEST(SampleRates, BelowOneAreSaidToBeThatOfTheAudio) {
  for (const char *rate : {"-44100", "0.5"})
    EXPECT_THAT(designed({{"samplerate", word(rate)}}).remarks,
                Contains(HasSubstr("a sample rate below 1 Hz cannot be used: 48000 Hz is")))
        << rate;
  EXPECT_THAT(designed({{"samplerate", word("0")}}).remarks, IsEmpty());
}
