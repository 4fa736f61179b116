// Settings as words behind a subcommand. That the command takes them so is tested with its parser,
// in tests/cli/args.
#include "designer/command_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "../designer_with_module.h"

using designer::Settings;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Words = std::vector<std::string>;

Words words_for(const Settings &settings) {
  designer::Designer &designer = tests::designer_with_module();
  return designer::command_words(designer.attributes(), settings, designer.fresh());
}

// As a box holds them.
Words words_of_box(const Settings &settings) {
  return words_for(tests::designer_with_module().accepted(settings).settings);
}

}  // namespace

TEST(CommandWords, AreNoneForAFreshBox) {
  EXPECT_THAT(words_for(tests::designer_with_module().fresh()), IsEmpty());
  EXPECT_THAT(words_of_box({}), IsEmpty()) << "it has another name";
}

TEST(CommandWords, SayWhatDiffersInTheOrderOfTheClass) {
  EXPECT_THAT(
      words_of_box({{"passband_ripple", {0.25}},
                    {"order", {t_long{8}}},
                    {"stopband_attenuation", {96.0}},
                    {"topology", {std::string("chebyshev-1")}}}),
      ElementsAre("--topology", "chebyshev-1", "--order", "8", "--passband-ripple", "0.25"));
}

TEST(CommandWords, SwitchAsTheCommandDoes) {
  EXPECT_THAT(words_of_box({{"zpk_output", {std::string("off")}},
                            {"sos_output", {std::string("on")}},
                            {"tf_output", {std::string("on")}}}),
              ElementsAre("--zpk-output", "off", "--tf-output", "on"));
}

TEST(CommandWords, HaveNumbersInTheirShortestForm) {
  EXPECT_THAT(words_of_box({{"units", {std::string("normalized")}}, {"frequency", {0.1 + 0.2}}}),
              ElementsAre("--units", "normalized", "--frequency", "0.30000000000000004"));
  EXPECT_THAT(words_of_box({{"frequency", {440.0}}, {"samplerate", {t_long{44100}}}}),
              ElementsAre("--samplerate", "44100", "--frequency", "440"));
}

// A box that becomes a band has a second cutoff that nobody gave.
TEST(CommandWords, SayBothCutoffsOfABand) {
  EXPECT_THAT(words_of_box({{"response", {std::string("bandpass")}}}),
              ElementsAre("--response", "bandpass", "--frequency", "3000", "21000"));
  EXPECT_THAT(words_for({{"response", {std::string("bandstop")}}, {"frequency", {3000.0}}}),
              ElementsAre("--response", "bandstop", "--frequency", "3000"))
      << "which the command refuses, rather than to take another second one";
}

TEST(CommandWords, TakeWhatIsMissingForFresh) {
  EXPECT_THAT(words_for({}), IsEmpty());
  EXPECT_THAT(words_for({{"order", {t_long{6}}}}), ElementsAre("--order", "6"));
}
