// Settings as people type them.
#include "args/option_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "args/settings_options.h"
#include "designer/refusal.h"

namespace {

using cli::Words;
using testing::ElementsAre;
using testing::HasSubstr;

const cli::Option &option(const std::string &name) {
  for (const cli::Option *one : cli::settings_options())
    if (one->name() == name) return *one;
  throw std::invalid_argument(name);
}

Words taken(const std::string &name, const Words &typed) {
  return cli::in_own_words(option(name), typed);
}

std::string refusal(const std::string &name, const std::string &typed) {
  try {
    taken(name, {typed});
  } catch (const designer::Refusal &found) {
    return found.what();
  }
  return "";
}

}  // namespace

TEST(OptionWords, TakeNumbersWithUnitsAndThousands) {
  const std::pair<const char *, const char *> cases[] = {
      {"3k", "3000"},       {"3.4kHz", "3400"}, {"44.1k", "44100"}, {"1.001K", "1001"},
      {"0.192M", "192000"}, {"50Hz", "50"},     {"50 hz", "50"},    {"3 kHz", "3000"},
      {"1e3", "1e3"},       {"-5k", "-5000"}};
  for (const auto &[typed, number] : cases)
    EXPECT_THAT(taken("--frequency", {typed}), ElementsAre(number)) << typed;
  EXPECT_THAT(taken("--samplerate", {"44.1kHz"}), ElementsAre("44100"));
  EXPECT_THAT(taken("--stopband-attenuation", {"60dB"}), ElementsAre("60"));
  EXPECT_THAT(taken("--passband-ripple", {"0.5 dB"}), ElementsAre("0.5"));
}

TEST(OptionWords, TakeUnitsWhereTheyAreThoseOfTheOption) {
  EXPECT_THAT(taken("--order", {"4Hz"}), ElementsAre("4Hz"));
  EXPECT_THAT(taken("--order", {"4dB"}), ElementsAre("4dB"));
  EXPECT_THAT(taken("--frequency", {"60dB"}), ElementsAre("60dB"));
  EXPECT_THAT(taken("--samplerate", {"48 dB"}), ElementsAre("48 dB"));
  EXPECT_THAT(taken("--stopband-attenuation", {"60Hz"}), ElementsAre("60Hz"));
  EXPECT_THAT(taken("--passband-ripple", {"1kHz"}), ElementsAre("1kHz"));
  EXPECT_THAT(taken("--order", {"0.1k"}), ElementsAre("100")) << "thousands are not a unit";
}

TEST(OptionWords, LeaveWhatIsNoNumber) {
  for (const char *typed : {"k", "Hz", "abck", "1e3k", "nan", "3m", "inf", ",", "3kk", "kHz"})
    EXPECT_THAT(taken("--frequency", {typed}), ElementsAre(typed));
}

TEST(OptionWords, TakeTwoNumbersWithAComma) {
  EXPECT_THAT(taken("--frequency", {"300,3400"}), ElementsAre("300", "3400"));
  EXPECT_THAT(taken("--frequency", {"300,", "3.4k"}), ElementsAre("300", "3400"));
  EXPECT_THAT(taken("--frequency", {"300Hz,3.4kHz"}), ElementsAre("300", "3400"));
  EXPECT_THAT(taken("--order", {"4,5"}), ElementsAre("4,5")) << "one value is one";
}

// A decimal comma, or two numbers with a unit behind the last?
TEST(OptionWords, AskWhatACommaMeansBeforeAUnit) {
  EXPECT_EQ(refusal("--frequency", "3,4kHz"),
            "--frequency cannot be '3,4kHz': write 3.4kHz for one number, or 3 4kHz for two");
  EXPECT_THAT(refusal("--frequency", "0,5Hz"),
              HasSubstr("write 0.5Hz for one number, or 0 5Hz for two"));
  EXPECT_THAT(refusal("--frequency", "1,5 kHz"), HasSubstr("1.5kHz for one number, or 1 5kHz"));
  for (const char *typed : {"20,20k", "300,3400Hz", "-1,5K", "3,4M"})
    EXPECT_THAT(refusal("--frequency", typed), HasSubstr("for one number")) << typed;
  for (const char *typed : {"300,3400", "300Hz,3400Hz", "300,3.4k", "0.3,4k", "1e2,4k", "3k,4k",
                            "3, 4kHz", "300,", ",4k", "1,2,3k", "3,x", "3,Hz"})
    EXPECT_EQ(refusal("--frequency", typed), "") << typed;
}

TEST(OptionWords, TakeShortNamesInAnyCase) {
  const std::array<std::array<const char *, 3>, 12> cases{
      {{"--topology", "butter", "butterworth"},
       {"--topology", "Butterworth", "butterworth"},
       {"--topology", "cheby1", "chebyshev-1"},
       {"--topology", "Chebyshev-II", "chebyshev-2"},
       {"--response", "LP", "lowpass"},
       {"--response", "high-pass", "highpass"},
       {"--response", "bp", "bandpass"},
       {"--response", "bs", "bandstop"},
       {"--response", "notch", "bandstop"},
       {"--units", "Hz", "hertz"},
       {"--units", "normalised", "normalized"},
       {"--tf-output", "yes", "on"}}};
  for (const auto &[name, typed, meaning] : cases)
    EXPECT_THAT(taken(name, {typed}), ElementsAre(meaning)) << typed;
}

TEST(OptionWords, AskWhetherACloseWordWasMeant) {
  EXPECT_EQ(refusal("--topology", "buterworth"),
            "--topology cannot be 'buterworth'; did you mean butterworth?");
  EXPECT_THAT(refusal("--response", "lowpas"), HasSubstr("did you mean lowpass?"));
  EXPECT_EQ(refusal("--topology", "elliptic"), "") << "the object says what there is";
}
