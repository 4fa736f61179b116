// Saved designs: what is read back from them, and designs that start from them.

#include <cmath>
#include <complex>
#include <nlohmann/json.hpp>
#include <numbers>

#include "json_text.h"
#include "published.h"
#include "run_command.h"
#include "saved.h"
#include "scratch_folder.h"

using testing::AllOf;
using testing::DoubleEq;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class Saved : public ScratchFolder {
 protected:
  // Runs the command with the options and reads what it saved.
  cli::Design saved(const std::string &options) const {
    const Outcome outcome =
        veltane("design --format json " + options + " -o " + path("saved.json"));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return filter(path("saved.json"));
  }

  static cli::Design filter(const std::string &file) {
    patchbay::Host host;
    cli::load_module(host, VELTANE_MODULE);
    return cli::saved_filter(host, file, cli::read_saved(file));
  }

  // @param design  its settings and its dictionary, as JSON
  cli::Design filter(const std::string &settings, const std::string &dictionary) const {
    return filter(write(
        "saved.json", "{\"settings\": {" + settings + "}, \"dictionary\": {" + dictionary + "}}"));
  }

  // What is said when it is refused; empty when it is not.
  std::string refusal(const std::string &settings, const std::string &dictionary) const {
    try {
      filter(settings, dictionary);
    } catch (const cli::Refusal &found) {
      return found.what();
    }
    return "";
  }

  cli::Published published(const std::string &options) const {
    return cli::published(saved(options));
  }
};

// The level of the roots at a fraction of the Nyquist frequency, in dB.
double level(const cli::Published &filter, double fraction) {
  const std::complex<double> z = std::polar(1.0, std::numbers::pi * fraction);
  double magnitude = std::abs(filter.gain.value());
  for (const auto &zero : filter.zeros) magnitude *= std::abs(z - zero);
  for (const auto &pole : filter.poles) magnitude /= std::abs(z - pole);
  return 20.0 * std::log10(magnitude);
}

nlohmann::json dictionary(const std::string &text) {
  return nlohmann::json::parse(text)["dictionary"];
}

}  // namespace

TEST_F(Saved, ADesignFromItIsTheSame) {
  const char *options[] = {
      "--order 7 --topology butterworth --frequency 1234.5",
      "--response bandstop --frequency 300 3400.25 --order 6 --tf-output on",
      "--topology chebyshev-1 --passband-ripple 0.3 --samplerate 44100 --response highpass",
      "--units normalized --frequency 0.1 --zpk-output off --sos-output on"};
  for (const char *option : options) {
    saved(option);
    const Outcome again = veltane("design --format json --from " + path("saved.json"));
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.err, "");
    EXPECT_EQ(dictionary(again.out), dictionary(read_file(path("saved.json")))) << option;
  }
}

TEST_F(Saved, WhatIsGivenBesideItWins) {
  saved("--order 7 --topology butterworth --frequency 1000");
  EXPECT_EQ(dictionary(veltane("design --format json --order 3 --from " + path("saved.json")).out),
            dictionary(veltane("design --format json --topology butterworth --frequency 1000 "
                               "--order 3")
                           .out));
}

TEST_F(Saved, ItComesFromStandardInputAsWell) {
  const Outcome outcome =
      run(VELTANE_COMMAND " design --order 3 --format json | " VELTANE_COMMAND " design --from -");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, veltane("design --order 3").out);
}

TEST_F(Saved, PublishedListsHaveTheRightLengths) {
  const cli::Published band =
      published("--response bandpass --frequency 300 3400 --order 5 --tf-output on");
  EXPECT_EQ(band.response, "bandpass");
  EXPECT_EQ(band.topology, "chebyshev-2");
  EXPECT_EQ(band.samplerate, 48000.0);
  EXPECT_THAT(band.poles, SizeIs(10));
  EXPECT_THAT(band.zeros, SizeIs(10));
  EXPECT_THAT(band.sections, SizeIs(5));
  EXPECT_THAT(band.numerator, SizeIs(11));
  EXPECT_THAT(band.denominator, SizeIs(11));
  EXPECT_EQ(band.denominator.front(), 1.0);
  const cli::Published none = published("--zpk-output off --sos-output off");
  EXPECT_THAT(none.poles, IsEmpty());
  EXPECT_THAT(none.sections, IsEmpty());
  EXPECT_THAT(none.numerator, IsEmpty());
  EXPECT_FALSE(none.gain.has_value());
}

TEST_F(Saved, PublishedSectionsAreTheRoots) {
  const cli::Published filter = published("--topology butterworth --order 6 --frequency 5000");
  const std::complex<double> z = std::polar(1.0, 1.0);
  std::complex<double> sections = 1.0;
  for (const auto &[b0, b1, b2, a1, a2] : filter.sections)
    sections *= (b0 + b1 / z + b2 / (z * z)) / (1.0 + a1 / z + a2 / (z * z));
  std::complex<double> roots = filter.gain.value();
  for (const auto &zero : filter.zeros) roots *= z - zero;
  for (const auto &pole : filter.poles) roots /= z - pole;
  EXPECT_NEAR(std::abs(sections / roots - 1.0), 0.0, 1e-12);
}

// A butterworth tells its cutoffs: there it is 3.01 dB down.
TEST_F(Saved, UsedCutoffsAreThoseOfTheFilter) {
  const char *options[] = {"--frequency 1000",
                           "--frequency 1000 --samplerate 8000",
                           "--frequency 1000 2000",
                           "--response highpass --frequency 1000",
                           "--response bandpass --frequency 1000 2000",
                           "--response bandstop --frequency 0.2 0.5 --units normalized",
                           "--frequency 0.3 --units normalized",
                           "--frequency 0.3 --units radians",
                           "--response bandpass --frequency 0.3 0.4 --units radians",
                           "--frequency 90000",
                           "--frequency 90000 --response highpass",
                           "--frequency 0",
                           "--frequency -5 --units normalized --response highpass"};
  for (const char *option : options) {
    const cli::Published filter =
        published(std::string("--topology butterworth --order 2 ") + option);
    EXPECT_EQ(filter.cutoffs.size(), filter.response.starts_with("band") ? 2U : 1U);
    for (const double cutoff : filter.cutoffs)
      EXPECT_NEAR(level(filter, cutoff), 10.0 * std::log10(0.5), 1e-3) << option;
  }
}

TEST_F(Saved, NullIsNoNumber) {
  const cli::Design design = filter(R"("order": 4, "samplerate": 8000)",
                                    R"("schema": "veltane", "gain": null, "poles": [0.5, null])");
  EXPECT_EQ(design.samplerate, 8000.0);
  EXPECT_TRUE(std::isnan(std::get<double>(design.dictionary[1].second)));
  const auto &poles = std::get<patchbay::Values>(design.dictionary[2].second);
  EXPECT_THAT(std::get<double>(poles[0]), DoubleEq(0.5));
  EXPECT_TRUE(std::isnan(std::get<double>(poles[1])));
}

TEST_F(Saved, ADictionaryThatIsNoFiltersIsNotTakenForOne) {
  const char *dictionaries[] = {
      R"("schema": "veltane")", R"("topology": 3, "response": "lowpass")",
      R"("topology": "chebyshev-2", "response": "lowpass", "poles": [1])",
      R"("topology": "chebyshev-2", "response": "lowpass", "gain": "1")",
      R"("topology": "chebyshev-2", "response": "lowpass", "cascade": [1, 2])"};
  for (const char *text : dictionaries) {
    const cli::Design design = filter(R"("units": "hertz", "frequency": [1000])", text);
    EXPECT_THROW(cli::published(design), std::runtime_error) << text;
  }
}

TEST_F(Saved, AFilterHasOnlySettingsThatTheModuleCanHave) {
  const cli::Design design = filter(
      R"("passband_ripple": 0, "stopband_attenuation": 1e308, "order": 18446744073709551615)", "");
  const auto held = [&](const std::string &name) {
    for (const auto &[key, values] : design.settings)
      if (key == name) return patchbay::to_text(values.at(0));
    return std::string();
  };
  EXPECT_EQ(held("passband_ripple"), "0.1");
  EXPECT_EQ(held("stopband_attenuation"), "240");
  EXPECT_EQ(held("order"), "200");
  EXPECT_EQ(held("topology"), "chebyshev-2") << "what is not there is that of a new box";
  EXPECT_THAT(design.remarks, SizeIs(3));
  EXPECT_THAT(refusal(R"("topology": "elliptic")", ""),
              AllOf(HasSubstr("saved.json': topology cannot be 'elliptic'"),
                    HasSubstr("butterworth, chebyshev-1, chebyshev-2")));
  EXPECT_THAT(refusal(R"("order": "many")", ""), HasSubstr("takes an integer, not 'many'"));
  EXPECT_THAT(refusal(R"("frequency": [1, 2, 3])", ""), HasSubstr("and 3 were given"));
  EXPECT_THAT(refusal(R"("ordr": 3)", ""), HasSubstr("there is no setting 'ordr'"));
}

TEST_F(Saved, IntegersOfAnySizeAreClippedOnTheRightSide) {
  for (const char *order : {"200", "201", "9223372036854775807", "9223372036854775808",
                            "18446744073709551615", "18446744073709551616", "1e300"}) {
    const cli::Design design = filter(std::string("\"order\": ") + order, "");
    EXPECT_THAT(design.settings,
                testing::Contains(std::pair(std::string("order"), patchbay::Values{t_long{200}})))
        << order;
  }
  for (const char *order : {"2", "1", "-9223372036854775808", "-9223372036854775809", "-1e300"}) {
    const cli::Design design = filter(std::string("\"order\": ") + order, "");
    EXPECT_THAT(design.settings,
                testing::Contains(std::pair(std::string("order"), patchbay::Values{t_long{2}})))
        << order;
  }
}

TEST_F(Saved, AFilterIsOfTheKindThatItsSettingsSay) {
  EXPECT_EQ(
      refusal(R"("response": "highpass")", R"("topology": "chebyshev-2", "response": "highpass")"),
      "");
  EXPECT_THAT(refusal("", R"("topology": "chebyshev-2", "response": "highpass")"),
              HasSubstr("has settings for a lowpass and the coefficients of a highpass"));
  EXPECT_THAT(refusal("", R"("topology": "butterworth", "response": "lowpass")"),
              HasSubstr("has settings for a chebyshev-2 and the coefficients of a butterworth"));
}

// A bandpass of order 200 has 200 sections, each of five numbers.
TEST_F(Saved, NoFilterIsLongerThanThatOfTheHighestOrder) {
  const auto of_length = [](int count) {
    std::string list = "1";
    for (int i = 1; i < count; ++i) list += ", 1";
    return "\"cascade\": [" + list + "]";
  };
  EXPECT_EQ(refusal("", of_length(1000)), "");
  EXPECT_THAT(refusal("", of_length(1001)),
              HasSubstr("has 1001 numbers, and a filter of order 200 has 1000 at most"));
}

TEST(Json, HoldsSoManyKeysAndValuesAndNoMore) {
  const auto object = [](int keys) {
    std::string text = "{";
    for (int i = 0; i < keys; ++i) text += (i > 0 ? ",\"k" : "\"k") + std::to_string(i) + "\":1";
    return text + "}";
  };
  const auto list = [](int values) {
    std::string text = "[1";
    for (int i = 1; i < values; ++i) text += ",1";
    return text + "]";
  };
  const auto refusal = [](const std::string &text) -> std::string {
    try {
      cli::parse_json(text, "'x'");
    } catch (const cli::Refusal &found) {
      return found.what();
    }
    return "";
  };
  EXPECT_EQ(refusal(object(1000)), "");
  EXPECT_EQ(refusal(object(1001)),
            "'x' has an object of more than 1000 keys, and no design has one");
  EXPECT_EQ(refusal(object(40000)), refusal(object(1001)));
  EXPECT_EQ(refusal("[" + object(700) + "," + object(700) + "]"), "") << "of one object";
  // The list itself is one of them.
  EXPECT_EQ(refusal(list(9999)), "");
  EXPECT_EQ(refusal(list(10000)), "'x' holds more than 10000 values, and no design does");
  EXPECT_EQ(refusal("[" + list(5000) + "," + list(5000) + "]"), refusal(list(10000)));
}

TEST(Settings, AreReadFromALineWithHyphensOrUnderscores) {
  const cli::Settings settings = cli::read_settings(
      R"({"passband-ripple": 0.5, "order": 4, "topology": "butterworth", "tf_output": true,
          "frequency": [1, 2.5]})");
  using patchbay::Values;
  EXPECT_THAT(settings,
              ElementsAre(std::pair(std::string("passband_ripple"), Values{0.5}),
                          std::pair(std::string("order"), Values{t_long{4}}),
                          std::pair(std::string("topology"), Values{std::string("butterworth")}),
                          std::pair(std::string("tf_output"), Values{std::string("true")}),
                          std::pair(std::string("frequency"), Values{t_long{1}, 2.5})));
}
