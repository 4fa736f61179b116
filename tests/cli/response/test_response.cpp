// `veltane response`: responses as numbers, held against closed forms.

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>
#include <sstream>

#include "../in_process.h"
#include "../run_command.h"
#include "../scratch_folder.h"

using nlohmann::json;
using tests::Refused;

namespace {

constexpr char lowpass[] = "--topology butterworth --order 4 --frequency 1000 ";

json response(const std::string &arguments) {
  const Outcome outcome = veltane("response --format json " + arguments);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  return json::parse(outcome.out);
}

// Of a digital butterworth lowpass: 1 / (1 + (tan(pi f / fs) / tan(pi fc / fs))^2n).
double level(double f) {
  const double ratio =
      std::tan(std::numbers::pi * f / 48000.0) / std::tan(std::numbers::pi * 1000.0 / 48000.0);
  return -10.0 * std::log10(1.0 + std::pow(ratio, 8.0));
}

}  // namespace

TEST(Response, LevelsAreThoseOfTheClosedForm) {
  const json found = response(std::string(lowpass) + "--from 20 --to 20000 --points 50");
  ASSERT_EQ(found["frequency_hz"].size(), 50U);
  EXPECT_EQ(found["samplerate"], 48000.0);
  for (std::size_t i = 0; i < 50; ++i) {
    const double f = found["frequency_hz"][i];
    EXPECT_NEAR(f, 20.0 * std::pow(1000.0, static_cast<double>(i) / 49.0), 1e-9 * f);
    EXPECT_NEAR(found["level_db"][i].get<double>(), level(f), 1e-9) << f;
  }
  EXPECT_EQ(found["frequency_hz"][49], 20000.0);
}

// The four poles of the prototype are half their angle each way: -180 degrees at the cutoff.
TEST(Response, PhaseIsContinuousOrWrapped) {
  const json found = response(std::string(lowpass) + "--at 0 1000 20000");
  EXPECT_NEAR(found["phase_deg"][0].get<double>(), 0.0, 1e-9);
  EXPECT_NEAR(found["phase_deg"][1].get<double>(), -180.0, 1e-9);
  const double late = found["phase_deg"][2];
  EXPECT_LT(late, -350.0);
  const json wrapped = response(std::string(lowpass) + "--at 20000 --wrapped");
  EXPECT_NEAR(wrapped["phase_deg"][0].get<double>(), late + 360.0, 1e-9);
}

TEST(Response, DelayIsTheSlopeOfThePhase) {
  const json found = response(std::string(lowpass) + "--at 499.999 500 500.001");
  const double slope =
      (found["phase_deg"][2].get<double>() - found["phase_deg"][0].get<double>()) / 360.0 / 0.002;
  EXPECT_NEAR(found["group_delay_samples"][1].get<double>(), -slope * 48000.0, 1e-4);
  EXPECT_NEAR(found["group_delay_ms"][1].get<double>(), -slope * 1000.0, 1e-5);
}

TEST(Response, FrequenciesAreEvenInRatioOrInHertz) {
  const json linear = response(std::string(lowpass) + "--linear --from 100 --to 500 --points 5");
  EXPECT_EQ(linear["frequency_hz"], json({100.0, 200.0, 300.0, 400.0, 500.0}));
  const json usual = response(lowpass);
  EXPECT_EQ(usual["frequency_hz"].size(), 200U);
  EXPECT_EQ(usual["frequency_hz"].front(), 24.0);
  EXPECT_EQ(usual["frequency_hz"].back(), 24000.0);
  EXPECT_EQ(response(std::string(lowpass) + "--linear --points 2")["frequency_hz"],
            json({0.0, 24000.0}));
  EXPECT_EQ(response(std::string(lowpass) + "--at 500 100")["frequency_hz"], json({500.0, 100.0}));
}

TEST(Response, ALevelOfNothingIsNull) {
  EXPECT_TRUE(response(std::string(lowpass) + "--at 24000")["level_db"][0].is_null());
  EXPECT_EQ(
      veltane("response " + std::string(lowpass) + "--at 24000 --format csv").out.find("-inf"),
      std::string("frequency_hz,level_db,phase_deg,group_delay_samples,group_delay_ms\n24000,")
          .size());
}

// H = 0.2928932188134525 (1 + z^-1)^2 / (1 + 0.1715728752538099 z^-2), a butterworth of order 2 at
// half the Nyquist frequency.
TEST(Response, ImpulseAndStepAreTheRecursion) {
  const json found = response(
      "--topology butterworth --order 2 --units normalized --frequency 0.5 --samplerate 1000 "
      "--impulse --step --length 4");
  const double b = 1.0 - std::sqrt(0.5), a = 3.0 - 2.0 * std::sqrt(2.0);
  const std::array impulse{b, 2.0 * b, b - a * b, -2.0 * a * b};
  double sum = 0.0;
  for (std::size_t i = 0; i < 4; ++i) {
    sum += impulse[i];
    EXPECT_NEAR(found["impulse"][i].get<double>(), impulse[i], 1e-14);
    EXPECT_NEAR(found["step"][i].get<double>(), sum, 1e-14);
  }
  EXPECT_EQ(found["time_ms"], json({0.0, 1.0, 2.0, 3.0}));
  EXPECT_EQ(response("--step")["step"].size(), 100U);
  EXPECT_FALSE(response("--step").contains("impulse"));
}

// As they are published, these sections make noise of a thousand times the output.
TEST(Response, AnImpulseIsTheFiltersAndNotItsRoundings) {
  const json found = response(
      "--topology butterworth --response bandpass --order 40 --frequency 20 450 --samplerate 2000 "
      "--impulse --length 2000");
  double energy = 0.0;
  for (const json &sample : found["impulse"]) energy += std::pow(sample.get<double>(), 2);
  // By Parseval's theorem that of the response: the band, for a filter as steep as this one.
  EXPECT_NEAR(energy, 430.0 / 1000.0, 0.01);
}

TEST(Response, CsvHasTheDigitsOfJson) {
  const json found = response(std::string(lowpass) + "--points 3");
  std::istringstream lines(
      veltane("response --format csv " + std::string(lowpass) + "--points 3").out);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "frequency_hz,level_db,phase_deg,group_delay_samples,group_delay_ms");
  for (std::size_t i = 0; i < 2; ++i) {
    std::getline(lines, line);
    std::istringstream cells(line);
    for (const char *key : {"frequency_hz", "level_db", "phase_deg"}) {
      std::string cell;
      std::getline(cells, cell, ',');
      EXPECT_EQ(std::stod(cell), found[key][i].get<double>()) << key;
    }
  }
}

TEST(Response, TextHasATitleAndColumns) {
  const std::string text = veltane("response --at 1000 " + std::string(lowpass)).out;
  EXPECT_TRUE(
      text.starts_with("butterworth lowpass of order 4, cutoff 1000 Hz, at 48000 Hz\n\n"
                       "frequency (Hz)  level (dB)"))
      << text;
  EXPECT_NE(text.find("\n          1000     -3.0103         -180"), std::string::npos) << text;
}

class ResponseFiles : public ScratchFolder {};

TEST_F(ResponseFiles, FromIsAFrequencyOrAFile) {
  const std::string file = path("saved.json");
  ASSERT_EQ(veltane("design --format json -o " + file + " " + lowpass).status, 0);
  const json typed = response(std::string(lowpass) + "--from 100 --points 3");
  EXPECT_EQ(response("--from " + file + " --from 100 --points 3")["level_db"], typed["level_db"]);
  EXPECT_EQ(response("--from 100 --from " + file + " --points 3")["level_db"], typed["level_db"]);
  EXPECT_EQ(response(std::string(lowpass) + "--from 0.1kHz --to 24k --points 3")["level_db"],
            typed["level_db"]);
  EXPECT_EQ(response("--from " + file + " --at 1000 --order 2")["level_db"],
            response("--topology butterworth --order 2 --frequency 1000 --at 1000")["level_db"]);
}

class RefusedResponses : public testing::TestWithParam<Refused> {};

TEST_P(RefusedResponses, AreOneSentence) { tests::expect_refusal(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Response, RefusedResponses,
    testing::Values(Refused{"response --from 5 --from 6", "one frequency and one file at most"},
                    Refused{"response --from none.json", "'none.json' cannot be read"},
                    Refused{"response --from -5", "from 0 to half the sample rate, 24000 Hz"},
                    Refused{"response --to 24001", "from 0 to half the sample rate, 24000 Hz"},
                    Refused{"response --at x", "--at takes frequencies in Hz, not 'x'"},
                    Refused{"response --at nan", "--at takes frequencies in Hz"},
                    Refused{"response --from 0", "equal ratios begin above 0 Hz"},
                    Refused{"response --from 10 --to 5", "the lower frequency comes first"},
                    Refused{"response --from 10 --to 10", "the lower frequency comes first"},
                    Refused{"response --points 1",
                            "--points takes a whole number from 2 to 1000000, not '1'"},
                    Refused{"response --points 2.5", "not '2.5'"},
                    Refused{"response --at 5 --to 6", "--at takes the place of a range"},
                    Refused{"response --at 5 --from 6", "--at takes the place of a range"},
                    Refused{"response --length 5", "--length belongs to --impulse and --step"},
                    Refused{"response --impulse --length 0", "from 1 to 10000000, not '0'"},
                    Refused{"response --step --to 5", "--impulse and --step take --length"},
                    Refused{"response --step --from 5", "--impulse and --step take --length"},
                    Refused{"response --format xml", "--format is text, csv or json"},
                    Refused{"response --zpk-output off", "neither zeros and poles nor sections"},
                    Refused{"response --sos-output off --impulse", "publish no sections"}));
