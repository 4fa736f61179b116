// Designs of the module, written.

#include "layouts/layout.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "designer/published_filter.h"
#include "designer/refusal.h"
#include "layouts/exported_filter.h"

using designer::Settings;
using layouts::Arrangement;
using layouts::Level;
using layouts::target_named;
using testing::HasSubstr;
using testing::Not;

namespace {

using Rows = std::vector<std::vector<double>>;

class Layout : public testing::Test {
 protected:
  designer::Design design(const Settings &settings) {
    return designer_.design(layouts::with_sections(settings));
  }

  layouts::File write(const Settings &settings, const char *target, Level level,
                      Arrangement arrangement) {
    return layouts::write(
        design(settings), target_named(target),
        {"veltane_filter", {"veltane", "export"}, level, arrangement, layouts::Noisy::written});
  }

  std::string text(const Settings &settings, const char *target) {
    return write(settings, target, Level::as_designed, Arrangement::quiet).text;
  }

  Rows sections(const Settings &settings, Level level, Arrangement arrangement) {
    return nlohmann::json::parse(write(settings, "json", level, arrangement).text)["sections"]
        .get<Rows>();
  }

  designer::Designer designer_{VELTANE_MODULE};
};

Settings of(const std::string &family, const std::string &response, long order,
            const designer::Values &frequency) {
  return {{"topology", {family}},
          {"response", {response}},
          {"order", {t_long{order}}},
          {"frequency", frequency}};
}

}  // namespace

TEST_F(Layout, SectionsAreThePublishedOnesToTheLastBit) {
  const Settings settings = of("chebyshev-1", "bandpass", 5, {300.0, 3400.0});
  Rows published;
  for (const analysis::Section &s : designer::published_filter(design(settings)).sections)
    published.push_back({s.b0, s.b1, s.b2, s.a1, s.a2});
  ASSERT_FALSE(published.empty());
  EXPECT_EQ(sections(settings, Level::as_designed, Arrangement::published), published);
}

TEST_F(Layout, OutputsThatWereSwitchedOffDoNotMatter) {
  Settings settings = of("butterworth", "lowpass", 5, {1000.0});
  const Rows rows = sections(settings, Level::as_designed, Arrangement::published);
  for (const char *output : {"zpk_output", "sos_output"})
    settings.set(output, {std::string("off")});
  EXPECT_EQ(sections(settings, Level::as_designed, Arrangement::published), rows);
  EXPECT_THROW(layouts::write(designer_.design(settings), target_named("csv"), {}),
               designer::Refusal)
      << "no sections were published";
}

TEST_F(Layout, EveryFileSaysWhatItHolds) {
  for (const layouts::Target &target : layouts::targets()) {
    const std::string file = text(of("butterworth", "lowpass", 5, {3000.0}), target.name);
    EXPECT_THAT(file, HasSubstr("butterworth lowpass of order 5, cutoff 3000 Hz, at 48000"))
        << target.name;
    EXPECT_THAT(file, HasSubstr("y[n] = ")) << target.name;
    EXPECT_THAT(file, HasSubstr("Level: as designed (--normalise is off).")) << target.name;
    EXPECT_EQ(file.find("Sections: arranged for the least rounding noise") != std::string::npos,
              target.form == layouts::Form::sections)
        << target.name;
  }
}

TEST_F(Layout, SaysHowItWasScaled) {
  const std::string file = write(of("chebyshev-1", "lowpass", 4, {1000.0}), "csv",
                                 Level::normalised, Arrangement::published_spread)
                               .text;
  EXPECT_THAT(file, HasSubstr("makes it -0.5 dB at DC, the bottom of the ripple"));
  EXPECT_THAT(file, HasSubstr("the gain spread by powers of two"));
  EXPECT_THAT(file, Not(HasSubstr("is off")));
}

TEST_F(Layout, NormalisedIsFullLevelAtTheReference) {
  for (const Arrangement arrangement :
       {Arrangement::quiet, Arrangement::published, Arrangement::published_spread}) {
    double level = 1.0;  // at DC
    for (const auto &s :
         sections(of("butterworth", "lowpass", 7, {3000.0}), Level::normalised, arrangement))
      level *= (s[0] + s[1] + s[2]) / (1.0 + s[3] + s[4]);
    EXPECT_NEAR(level, 1.0, 1e-10);
  }
}

TEST_F(Layout, RemarksAreInTheFileAndBesideIt) {
  const Settings settings = of("butterworth", "bandpass", 2, {40.0, 60.0});
  const layouts::File floats = write(settings, "cmsis", Level::as_designed, Arrangement::published);
  ASSERT_THAT(floats.remarks, testing::SizeIs(1));
  EXPECT_THAT(floats.remarks[0], HasSubstr("rounding to floats changes the level by up to "));
  EXPECT_THAT(floats.text, HasSubstr("// Note: " + floats.remarks[0] + ".\n"));
  const layouts::File doubles = write(settings, "c", Level::as_designed, Arrangement::published);
  EXPECT_THAT(doubles.remarks, testing::IsEmpty());
  EXPECT_THAT(doubles.text, Not(HasSubstr("Note:")));
}

TEST_F(Layout, AnotherArrangementIsNotForLists) {
  EXPECT_THROW(write(of("butterworth", "lowpass", 4, {1000.0}), "webaudio", Level::as_designed,
                     Arrangement::published_spread),
               designer::Refusal);
}
