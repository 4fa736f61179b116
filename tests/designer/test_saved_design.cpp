// Saved designs: what is read back from them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "../designer_with_module.h"
#include "designer/published_filter.h"
#include "designer/refusal.h"
#include "designer/saved_design.h"

using designer::Design;
using designer::Values;
using testing::AllOf;
using testing::DoubleEq;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

// @param settings, dictionary  the members of each, as JSON
Design filter(const std::string &settings, const std::string &dictionary) {
  const std::string json =
      "{\"settings\": {" + settings + "}, \"dictionary\": {" + dictionary + "}}";
  return designer::opened(tests::designer_with_module(),
                          designer::parse_saved_design(json, "'saved.json'"), "'saved.json'");
}

template <class Function>
std::string refusal_of(const Function &function) {
  try {
    function();
  } catch (const designer::Refusal &found) {
    return found.what();
  }
  return "";
}

// What is said when it is refused; empty when it is not.
std::string refusal(const std::string &settings, const std::string &dictionary) {
  return refusal_of([&] { filter(settings, dictionary); });
}

std::string parsed(const std::string &json) {
  return refusal_of([&] { designer::parse_saved_design(json, "'x'"); });
}

std::string line_refusal(const std::string &json) {
  return refusal_of([&] { designer::parse_settings(json, "the line"); });
}

}  // namespace

TEST(SavedDesign, NullIsNotANumber) {
  const Design design = filter(R"("order": 4, "samplerate": 8000)",
                               R"("schema": "veltane", "gain": null, "poles": [0.5, null])");
  EXPECT_EQ(design.samplerate, 8000.0);
  EXPECT_TRUE(std::isnan(std::get<double>(design.dictionary[1].second)));
  const auto &poles = std::get<Values>(design.dictionary[2].second);
  EXPECT_THAT(std::get<double>(poles[0]), DoubleEq(0.5));
  EXPECT_TRUE(std::isnan(std::get<double>(poles[1])));
}

TEST(SavedDesign, AnotherDictionaryIsNotTakenForAFilter) {
  const char *dictionaries[] = {
      R"("schema": "veltane")", R"("topology": 3, "response": "lowpass")",
      R"("topology": "chebyshev-2", "response": "lowpass", "poles": [1])",
      R"("topology": "chebyshev-2", "response": "lowpass", "gain": "1")",
      R"("topology": "chebyshev-2", "response": "lowpass", "cascade": [1, 2])"};
  for (const char *text : dictionaries) {
    const Design design = filter(R"("units": "hertz", "frequency": [1000])", text);
    EXPECT_THROW(designer::published_filter(design), std::runtime_error) << text;
  }
}

TEST(SavedDesign, AFilterHasOnlySettingsThatTheModuleCanHave) {
  const Design design = filter(
      R"("passband_ripple": 0, "stopband_attenuation": 1e308, "order": 18446744073709551615)", "");
  const auto held = [&](const char *name) { return design.settings.text(name); };
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

TEST(SavedDesign, IntegersOfAnySizeAreClippedOnTheRightSide) {
  for (const char *order : {"200", "201", "9223372036854775807", "9223372036854775808",
                            "18446744073709551615", "18446744073709551616", "1e300"}) {
    const Design design = filter(std::string("\"order\": ") + order, "");
    EXPECT_EQ(*design.settings.find("order"), Values{t_long{200}}) << order;
  }
  for (const char *order : {"2", "1", "-9223372036854775808", "-9223372036854775809", "-1e300"}) {
    const Design design = filter(std::string("\"order\": ") + order, "");
    EXPECT_EQ(*design.settings.find("order"), Values{t_long{2}}) << order;
  }
}

TEST(SavedDesign, AFilterIsOfTheKindThatItsSettingsSay) {
  EXPECT_EQ(
      refusal(R"("response": "highpass")", R"("topology": "chebyshev-2", "response": "highpass")"),
      "");
  EXPECT_THAT(refusal("", R"("topology": "chebyshev-2", "response": "highpass")"),
              HasSubstr("has settings for a lowpass and the coefficients of a highpass"));
  EXPECT_THAT(refusal("", R"("topology": "butterworth", "response": "lowpass")"),
              HasSubstr("has settings for a chebyshev-2 and the coefficients of a butterworth"));
}

// A bandpass of order 200 has 200 sections, each of five numbers.
TEST(SavedDesign, NoFilterIsLongerThanThatOfTheHighestOrder) {
  const auto of_length = [](int count) {
    std::string list = "1";
    for (int i = 1; i < count; ++i) list += ", 1";
    return "\"cascade\": [" + list + "]";
  };
  EXPECT_EQ(refusal("", of_length(1000)), "");
  EXPECT_THAT(refusal("", of_length(1001)),
              HasSubstr("has 1001 numbers; a filter of order 200 has at most 1000"));
}

TEST(SavedDesign, HoldsSoManyKeysAndValuesAndNoMore) {
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
  const std::string without = "'x' is not a saved design";
  EXPECT_THAT(parsed(object(1000)), HasSubstr(without));
  EXPECT_EQ(parsed(object(1001)), "'x' has an object of more than 1000 keys, which no design has");
  EXPECT_EQ(parsed(object(40000)), parsed(object(1001)));
  EXPECT_THAT(parsed("[" + object(700) + "," + object(700) + "]"), HasSubstr(without))
      << "of one object";
  // The list itself is one of them.
  EXPECT_THAT(parsed(list(9999)), HasSubstr(without));
  EXPECT_EQ(parsed(list(10000)), "'x' holds more than 10000 values, which no design does");
  EXPECT_EQ(parsed("[" + list(5000) + "," + list(5000) + "]"), parsed(list(10000)));
}

TEST(ParseSettings, TakesHyphensOrUnderscores) {
  const designer::Settings settings = designer::parse_settings(
      R"({"passband-ripple": 0.5, "order": 4, "topology": "butterworth", "tf_output": true,
          "frequency": [1, 2.5]})",
      "the line");
  ASSERT_EQ(settings.size(), 5U);
  EXPECT_EQ(settings.begin()->name, "passband_ripple");
  EXPECT_EQ(*settings.find("passband_ripple"), Values{0.5});
  EXPECT_EQ(*settings.find("order"), Values{t_long{4}});
  EXPECT_EQ(*settings.find("topology"), Values{std::string("butterworth")});
  EXPECT_EQ(*settings.find("tf_output"), Values{std::string("true")});
  EXPECT_EQ(*settings.find("frequency"), (Values{t_long{1}, 2.5}));
  EXPECT_TRUE(designer::parse_settings(" {} ", "the line").empty());
}

// Whatever the short way to read a line leaves is refused in the words of the long way.
TEST(ParseSettings, SaysWhatIsWrongWithALine) {
  EXPECT_THAT(line_refusal("[]"), HasSubstr("the line is not an object of settings"));
  EXPECT_THAT(line_refusal("4"), HasSubstr("the line is not an object of settings"));
  EXPECT_THAT(line_refusal(""), HasSubstr("the line is not JSON: "));
  EXPECT_THAT(line_refusal(R"({"order": 4)"), HasSubstr("the line is not JSON: "));
  EXPECT_THAT(line_refusal(R"({"order": 4} x)"), HasSubstr("the line is not JSON: "));
  EXPECT_THAT(line_refusal(R"({"order": 4, "order": 5})"), HasSubstr("the line has 'order' twice"));
  EXPECT_THAT(line_refusal(R"({"tf-output": 1, "tf_output": 1})"),
              HasSubstr("the line has 'tf_output' twice"));
  EXPECT_THAT(line_refusal(R"({"order": null})"), HasSubstr("true or false, not null"));
  EXPECT_THAT(line_refusal(R"({"order": {}})"), HasSubstr("not an object"));
  EXPECT_THAT(line_refusal(R"({"frequency": [1, [2]]})"), HasSubstr("not a list"));
  EXPECT_THAT(line_refusal(R"({"name": ""})"), HasSubstr("name cannot be ''"));
  EXPECT_THAT(line_refusal(R"({"name": "a\u0000b"})"), HasSubstr("name cannot be"));
  std::string deep = "1";
  for (int i = 0; i < 17; ++i) deep = "[" + deep + "]";
  EXPECT_THAT(line_refusal(deep), HasSubstr("nests deeper than 16 levels"));
}

// The short way takes 64 settings of 64 values; more take the long way, which knows the same.
TEST(ParseSettings, TakesManySettingsEitherWay) {
  for (const int count : {63, 64, 65, 66, 900}) {
    std::string object = "{", list = "1";
    for (int i = 0; i < count; ++i)
      object += (i > 0 ? ", \"k" : "\"k") + std::to_string(i) + "\": " + std::to_string(i);
    for (int i = 1; i < count; ++i) list += ", 1";
    EXPECT_EQ(designer::parse_settings(object + "}", "it").size(), static_cast<std::size_t>(count));
    EXPECT_THAT(*designer::parse_settings("{\"a\": [" + list + "]}", "it").find("a"),
                SizeIs(count));
  }
}
