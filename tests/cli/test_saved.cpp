// Saved designs: what is read back from them, and designs that start from them.

#include <cmath>
#include <complex>
#include <nlohmann/json.hpp>
#include <numbers>

#include "published.h"
#include "run_command.h"
#include "saved.h"
#include "scratch_folder.h"

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
    return cli::read_saved(path("saved.json"));
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
  const auto file = write("saved.json", R"({"settings": {"order": 4, "samplerate": 8000},
      "dictionary": {"schema": "veltane", "gain": null, "poles": [0.5, null]}})");
  const cli::Design design = cli::read_saved(file);
  EXPECT_EQ(design.samplerate, 8000.0);
  EXPECT_TRUE(std::isnan(std::get<double>(design.dictionary[1].second)));
  const auto &poles = std::get<patchbay::Values>(design.dictionary[2].second);
  EXPECT_THAT(std::get<double>(poles[0]), DoubleEq(0.5));
  EXPECT_TRUE(std::isnan(std::get<double>(poles[1])));
}

TEST_F(Saved, ADictionaryThatIsNoFiltersIsNotTakenForOne) {
  const char *dictionaries[] = {R"({"schema": "veltane"})",
                                R"({"topology": 3, "response": "lowpass"})",
                                R"({"topology": "x", "response": "lowpass", "poles": [1]})",
                                R"({"topology": "x", "response": "lowpass", "gain": "1"})",
                                R"({"topology": "x", "response": "lowpass", "cascade": [1, 2]})"};
  for (const char *text : dictionaries) {
    const auto file = write("saved.json", std::string(R"({"settings": {"units": "hertz",
        "frequency": [1000]}, "dictionary": )") +
                                              text + "}");
    EXPECT_THROW(cli::published(cli::read_saved(file)), std::runtime_error) << text;
  }
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
