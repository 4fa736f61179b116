// Settings at and beyond the ends of their ranges. Whatever is asked for: the command ends with
// status 0, 1 or 2, and with words.

#include <random>

#include "run_command.h"
#include "scratch_folder.h"

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

namespace {

using Choices = std::vector<std::string>;

class Extremes : public ScratchFolder {
 protected:
  const std::string &one_of(const Choices &choices) {
    return choices[std::uniform_int_distribution<std::size_t>(0, choices.size() - 1)(random_)];
  }

  // Options for a filter, each at an extreme.
  std::string settings() {
    static const Choices cutoffs[] = {
        {"0", "-5", "2.4", "1000", "23997.6", "24000", "30000", "1e308", "1e-300"},
        {"0", "0.0001", "0.5", "0.9999", "0.99989", "1", "300", "3400", "-1e308"},
        {"0", "1", "3", "1e308", "-1"}};
    static const Choices units{"hertz", "normalized", "radians"};
    const auto unit = std::uniform_int_distribution<std::size_t>(0, 2)(random_);
    const std::string response = one_of({"lowpass", "highpass", "bandpass", "bandstop"});
    std::string text = " --topology " + one_of({"butterworth", "chebyshev-1", "chebyshev-2"}) +
                       " --response " + response + " --units " + units[unit] + " --frequency " +
                       one_of(cutoffs[unit]);
    if (response.starts_with("band")) text += ' ' + one_of(cutoffs[unit]);
    const auto add = [&](const char *option, const Choices &choices) {
      const std::string &choice = one_of(choices);
      if (!choice.empty()) text += std::string(" --") + option + ' ' + choice;
    };
    const Choices switches{"", "", "on", "off"};
    add("order", {"", "2", "3", "20", "1", "-9223372036854775808", "4.5"});
    add("samplerate", {"", "", "0", "1", "-1", "9223372036854775807", "1e308", "0.5"});
    add("passband-ripple", {"", "0.1", "48", "0", "1e308", "-1"});
    add("stopband-attenuation", {"", "6", "240", "0", "1e308", "-1"});
    add("zpk-output", switches);
    add("sos-output", switches);
    add("tf-output", switches);
    return text;
  }

  void expect_words(const std::string &command) const {
    const Outcome outcome = run("cd " + path(".") + " && " VELTANE_COMMAND " " + command);
    EXPECT_THAT(outcome.status, AnyOf(0, 1, 2)) << command << '\n' << outcome.err;
    if (outcome.status == 2) {
      EXPECT_TRUE(outcome.err.starts_with("veltane: ")) << command;
      EXPECT_GT(outcome.err.size(), 30U) << command;
    }
    if (outcome.status == 1) {
      EXPECT_THAT(outcome.out, HasSubstr("PROBLEM")) << command;
      EXPECT_THAT(outcome.out, HasSubstr("change: ")) << command;
    }
  }

 private:
  std::mt19937 random_{8};
};

}  // namespace

TEST_F(Extremes, OfAllSettingsAreDesignedOrRefused) {
  for (int i = 0; i < 15; ++i) expect_words("design" + settings());
}

TEST_F(Extremes, OfAllSettingsAreChecked) {
  for (int i = 0; i < 40; ++i) expect_words("check" + settings());
}

TEST_F(Extremes, OfAllSettingsAreExportedOrRefused) {
  for (int i = 0; i < 25; ++i)
    expect_words("export --for " + one_of({"csv", "c-float", "webaudio", "json"}) +
                 one_of({"", " --normalise"}) + one_of({"", " --spread-gain"}) + settings());
}

TEST_F(Extremes, OfAllSettingsAreDrawnOrRefused) {
  for (int i = 0; i < 12; ++i) expect_words("plot -o a.svg" + settings());
}

// The mistakes that a check is there for.
TEST_F(Extremes, CutoffsThatBecomeEqualAreExplained) {
  for (const std::string filter : {"--response bandstop --frequency 30000 40000",
                                   "--response bandpass --frequency 30000 40000",
                                   "--response bandpass --frequency 300 3400 --units normalized",
                                   "--response bandstop --frequency 300 3400 --units normalized",
                                   "--response bandpass --frequency 30000 40000 --order 20",
                                   "--response bandstop --frequency -3 1 --topology butterworth"}) {
    const Outcome checked = veltane("check " + filter);
    EXPECT_EQ(checked.status, 1) << filter << checked.err;
    EXPECT_THAT(checked.out, HasSubstr("PROBLEM: cutoff: the two cutoffs are both ")) << filter;
    EXPECT_THAT(checked.out, Not(HasSubstr("the level there"))) << filter;
    const Outcome exported = veltane("export --for csv --normalise " + filter);
    EXPECT_EQ(exported.status, 2) << filter << exported.err;
  }
  EXPECT_THAT(
      veltane("export --for csv --normalise --response bandstop --frequency 30000 40000").err,
      HasSubstr("--normalise needs a band: the two cutoffs are equal"));
}

TEST_F(Extremes, ASilentFilterIsNotSaidToHaveALevel) {
  const Outcome silent = veltane("check --topology butterworth --order 190 --frequency 200");
  EXPECT_EQ(silent.status, 1);
  EXPECT_THAT(silent.out, HasSubstr("silent"));
  EXPECT_THAT(silent.out, Not(HasSubstr("the level there is")));
  EXPECT_THAT(veltane("check --topology butterworth --order 19 --frequency 200").out,
              HasSubstr("200 Hz: the level there is -3.01 dB"));
}
