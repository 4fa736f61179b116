// What `veltane design` prints.

#include <cmath>
#include <nlohmann/json.hpp>
#include <regex>

#include "../run_command.h"
#include "layouts/document.h"
#include "patchbay/host.h"

using Json = nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

Json designed(const std::string &arguments) {
  const Outcome outcome = veltane("design --format json " + arguments);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  return Json::parse(outcome.out);
}

std::vector<std::string> keys(const Json &object) {
  std::vector<std::string> list;
  for (const auto &[key, value] : object.items()) list.push_back(key);
  return list;
}

std::size_t position(const std::string &text, const std::string &part) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return at;
}

}  // namespace

TEST(DesignCommand, ShowsTheDefaultDesign) {
  const Outcome outcome = veltane("design");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(outcome.out, HasSubstr("chebyshev-2 lowpass of order 5, cutoff 3000 Hz"));
}

TEST(DesignCommand, TextHasKeysInPublishedOrderAndTheEquation) {
  const std::string page = veltane("design --tf-output on").out;
  std::size_t last = 0;
  for (const char *key : {"\nschema ", "\nresponse ", "\ntopology ", "\nripple ", "\ndenominator ",
                          "\nnumerator ", "\nzeroes ", "\npoles ", "\ngain ", "\ncascade "}) {
    EXPECT_GT(position(page, key), last);
    last = position(page, key);
  }
  EXPECT_THAT(page, HasSubstr("product of (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2)"));
}

TEST(DesignCommand, TextHasOneLineForEachSectionAndComplexValues) {
  const std::string page = veltane("design --topology butterworth --order 7").out;
  const std::string sections = page.substr(position(page, "cascade"));
  EXPECT_EQ(std::count(sections.begin(), sections.end(), '\n'), 1 + 1 + 4)
      << "the equation, the heads of the columns, and four sections";
  const std::string poles = page.substr(position(page, "poles"));
  EXPECT_TRUE(std::regex_search(poles, std::regex("0\\.[0-9]+ \\+ 0\\.[0-9]+i\n")));
  EXPECT_TRUE(std::regex_search(poles, std::regex("0\\.[0-9]+ - 0\\.[0-9]+i\n")));
}

TEST(DesignCommand, JsonHasTheStableForm) {
  const Json document = designed("--order 3");
  EXPECT_THAT(keys(document), ElementsAre("veltane", "command", "settings", "dictionary"));
  EXPECT_EQ(document["command"], Json({"veltane", "design", "--format", "json", "--order", "3"}));
  EXPECT_THAT(keys(document["settings"]),
              ElementsAre("name", "topology", "response", "units", "samplerate", "order",
                          "frequency", "passband_ripple", "stopband_attenuation", "zpk_output",
                          "sos_output", "tf_output"));
  EXPECT_THAT(keys(document["dictionary"]), ElementsAre("schema", "response", "topology", "ripple",
                                                        "zeroes", "poles", "gain", "cascade"));
  EXPECT_EQ(document["dictionary"]["poles"].size(), 6U);
}

// To the byte: programs read this.
TEST(DesignCommand, JsonIsWrittenLikeThis) {
  const std::string name = "veltane ";
  const std::string version = veltane("--version").out;
  ASSERT_TRUE(version.starts_with(name) && version.ends_with('\n')) << version;
  EXPECT_EQ(veltane("design --name n --zpk-output off --sos-output off --format json").out,
            R"({
  "veltane": ")" +
                version.substr(name.size(), version.size() - name.size() - 1) + R"(",
  "command": ["veltane", "design", "--name", "n", "--zpk-output", "off", "--sos-output", "off", "--format", "json"],
  "settings": {
    "name": "n",
    "topology": "chebyshev-2",
    "response": "lowpass",
    "units": "hertz",
    "samplerate": 0,
    "order": 5,
    "frequency": [3000.0],
    "passband_ripple": 0.5,
    "stopband_attenuation": 96.0,
    "zpk_output": 0,
    "sos_output": 0,
    "tf_output": 0
  },
  "dictionary": {
    "schema": "veltane",
    "response": "lowpass",
    "topology": "chebyshev-2",
    "ripple": 0.0
  }
}
)");
}

TEST(DesignCommand, TextShowsWhatIsThereAndWhatIsNot) {
  const std::string page =
      veltane("design --zpk-output off --tf-output on --units normalized --frequency 0.25").out;
  EXPECT_THAT(page, HasSubstr("cutoff 0.25 of Nyquist, attenuation 96 dB, at 48000 Hz\n"));
  EXPECT_THAT(page, HasSubstr("cascade      none\n"));
  EXPECT_THAT(page, HasSubstr("\n             z^-5  "));
}

TEST(DesignCommand, SaysWhenACutoffIsNotUsed) {
  const Outcome outcome = veltane("design --frequency 300 3400");
  EXPECT_EQ(outcome.err, "veltane: a lowpass has one cutoff: 3400 is not used\n");
  EXPECT_THAT(outcome.out, HasSubstr("cutoff 300 Hz,"));
}

TEST(DesignCommand, JsonSettingsAreThoseAfterClipping) {
  const Json settings = designed("--order 1 --passband-ripple 99")["settings"];
  EXPECT_EQ(settings["order"], 2);
  EXPECT_EQ(settings["passband_ripple"], 48.0);
}

TEST(DesignCommand, JsonNumbersReadBackToWhatTheModulePublished) {
  const Json dictionary =
      designed("--order 4 --response bandpass --frequency 300 3400 --tf-output on")["dictionary"];
  patchbay::Host host;
  host.load(VELTANE_MODULE);
  const auto box =
      host.make("veltane name: here order: 4 response: bandpass frequency: 300 3400 tf_output: 1");
  host.send(box, "bang");
  const auto published = host.dictionary("here").value();
  ASSERT_EQ(published.size(), dictionary.size());
  for (const auto &[key, entry] : published) {
    if (const auto *text = std::get_if<std::string>(&entry)) {
      EXPECT_EQ(dictionary[key], *text);
    } else if (const auto *number = std::get_if<double>(&entry)) {
      EXPECT_EQ(dictionary[key].get<double>(), *number) << key;
    } else {
      const auto &values = std::get<patchbay::Values>(entry);
      ASSERT_EQ(dictionary[key].size(), values.size()) << key;
      for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(dictionary[key][i].get<double>(), std::get<double>(values[i])) << key;
    }
  }
}

TEST(DesignCommand, JsonNumbersHaveSeventeenDigits) {
  EXPECT_THAT(veltane("design --format json --passband-ripple 0.3").out,
              HasSubstr("\"passband_ripple\": 0.29999999999999999,"));
}

TEST(DesignCommand, JsonHasNullForWhatIsNotFinite) {
  designer::Design design{};
  design.settings = {{"frequency", {std::nan("")}}};
  design.dictionary = {{"gain", -INFINITY}, {"poles", designer::Values{INFINITY, 0.5}}};
  const Json document = Json::parse(layouts::design_document(design, {"veltane"}));
  EXPECT_EQ(document["settings"]["frequency"], Json::array({nullptr}));
  EXPECT_EQ(document["dictionary"]["gain"], nullptr);
  EXPECT_EQ(document["dictionary"]["poles"], Json({nullptr, 0.5}));
}

TEST(DesignCommand, OptionsTakeHyphensAndUnderscores) {
  const Json hyphen = designed("--stopband-attenuation 40")["dictionary"];
  EXPECT_EQ(hyphen, designed("--stopband_attenuation 40")["dictionary"]);
  EXPECT_EQ(hyphen, designed("--stopband_attenuation=40")["dictionary"]);
  EXPECT_NE(hyphen, designed("")["dictionary"]);
}

TEST(DesignCommand, ValuesKeepTheirUnderscores) {
  EXPECT_EQ(designed("--name my_filter")["settings"]["name"], "my_filter");
}

TEST(DesignCommand, FrequencyTakesOneOrTwoValues) {
  EXPECT_EQ(designed("--frequency 1000")["settings"]["frequency"], Json({1000.0}));
  EXPECT_EQ(designed("--response bandstop --frequency 1000 2000")["settings"]["frequency"],
            Json({1000.0, 2000.0}));
}

TEST(DesignCommand, TheOrderOfOptionsDoesNotMatter) {
  const Json dictionary = designed("--response bandpass --frequency 300 3400")["dictionary"];
  EXPECT_EQ(dictionary, designed("--frequency 300 3400 --response bandpass")["dictionary"]);
}

TEST(DesignCommand, SwitchesAreOnOrOff) {
  EXPECT_EQ(designed("--zpk-output off")["settings"]["zpk_output"], 0);
  EXPECT_EQ(designed("--zpk-output 0")["settings"]["zpk_output"], 0);
  EXPECT_EQ(designed("--tf-output on")["settings"]["tf_output"], 1);
}

TEST(DesignCommand, SaysWhichCutoffWasClipped) {
  const Outcome outcome = veltane("design --samplerate 8000 --frequency 5000");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "veltane: a cutoff of 5000 Hz is too high at a sample rate of 8000 Hz: 3999.6 Hz is "
            "used\n");
}

TEST(DesignCommand, SaysWhenASettingWasClipped) {
  EXPECT_EQ(veltane("design --order 500").err,
            "veltane: order takes whole numbers from 2 to 200: 200 is used, not 500\n");
  EXPECT_EQ(veltane("design --order 4.5").err,
            "veltane: order takes whole numbers from 2 to 200: 4 is used, not 4.5\n");
  EXPECT_EQ(veltane("design --order 4.0").err, "");
}

TEST(DesignCommand, HelpNamesEveryAttributeAndItsChoices) {
  const Outcome outcome = veltane("design --help");
  EXPECT_EQ(outcome.status, 0);
  for (const char *part :
       {"--name", "--topology", "butterworth, chebyshev-1, chebyshev-2", "--response", "--units",
        "--samplerate", "--order", "2 to 200", "--frequency", "--passband-ripple",
        "Chebyshev-I Passband Ripple: 0.1 to 48", "--stopband-attenuation", "6 to 240",
        "--zpk-output", "--sos-output", "--tf-output", "--format", "--module"})
    EXPECT_THAT(outcome.out, HasSubstr(part));
}

TEST(DesignCommand, TheLibraryExampleDesignsTheSameFilter) {
  const Json cascade =
      designed("--topology butterworth --order 4 --frequency 1000")["dictionary"]["cascade"];
  std::istringstream printed(run(EXAMPLE_COMMAND).out);
  std::string head;
  std::getline(printed, head);
  std::getline(printed, head);
  for (const Json &expected : cascade) {
    double value = std::nan("");
    printed >> value;
    EXPECT_NEAR(value, expected.get<double>(), 1e-12);
  }
}
