// What a session answers to what a page asks.

#include <cmath>

#include "layouts/target.h"
#include "session_test.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const Json butterworth = {{"topology", {"butterworth"}}, {"order", {4}}, {"frequency", {1000}}};

Json live(const Json &settings, const std::vector<std::string> &panels) {
  return {{"settings", settings}, {"panels", panels}};
}

TEST_F(SessionTest, DescribesWhatTheClassDeclares) {
  const Json said = ask("describe").document;
  const Json &order = *std::find_if(said.at("attributes").begin(), said.at("attributes").end(),
                                    [](const Json &a) { return a.at("name") == "order"; });
  EXPECT_EQ(order.at("type"), "long");
  EXPECT_EQ(order.at("lowest"), 2);
  EXPECT_EQ(said.at("fresh").at("order"), Json::array({5}));
  EXPECT_EQ(said.at("targets").size(), layouts::targets().size());
}

TEST_F(SessionTest, DesignsAndDrawsInOneAnswer) {
  const page::Answer answer = ask("live", live(butterworth, {"level", "poles"}));
  const Json &design = answer.document.at("design");
  EXPECT_EQ(design.at("title"), "butterworth lowpass of order 4, cutoff 1000 Hz, at 48000 Hz");
  EXPECT_EQ(design.at("command"), Json({"veltane", "design", "--topology", "butterworth", "--order",
                                        "4", "--frequency", "1000"}));
  EXPECT_EQ(answer.document.at("undrawable"), "");
  EXPECT_TRUE(answer.document.at("panels").contains("poles"));
  EXPECT_FALSE(answer.document.at("panels").contains("phase"));
}

TEST_F(SessionTest, EnlargedPolesSayWhereTheyLieInThePlane) {
  const page::Answer answer = ask("live", live(butterworth, {"zeros_and_poles", "poles"}));
  const Json &panels = answer.document.at("panels");
  EXPECT_EQ(panels.at("zeros_and_poles").at("origin"), Json({0.0, 0.0}));
  EXPECT_EQ(panels.at("zeros_and_poles").at("unit"), 1.0);
  EXPECT_EQ(panels.at("poles").at("origin").size(), 2U);
  EXPECT_GE(panels.at("poles").at("unit"), 1.0);
}

TEST_F(SessionTest, ALevelIs3dBDownAtItsCutoff) {
  const page::Answer answer = ask("live", live(butterworth, {"level"}));
  const Json &level = answer.document.at("panels").at("level");
  const std::vector<double> hz = numbers(answer, level.at("curves").at(0).at("x"));
  const std::vector<double> db = numbers(answer, level.at("curves").at(0).at("y"));
  ASSERT_EQ(hz.size(), db.size());
  const auto cutoff = std::min_element(hz.begin(), hz.end(), [](double a, double b) {
    return std::abs(a - 1000) < std::abs(b - 1000);
  });
  EXPECT_NEAR(*cutoff, 1000, 1e-6);
  EXPECT_NEAR(db[static_cast<std::size_t>(cutoff - hz.begin())], -10 * std::log10(2.0), 1e-6);
}

TEST_F(SessionTest, PanelsShowTheFrequenciesInView) {
  Json request = live(butterworth, {"level", "phase", "delay"});
  request["view"] = {{"low", 500}, {"high", 2000}, {"scale", "linear"}, {"wrapped", true}};
  const page::Answer answer = ask("live", request);
  for (const char *name : {"level", "phase", "delay"}) {
    const Json &axis = answer.document.at("panels").at(name).at("x");
    EXPECT_EQ(axis.at("low"), 500) << name;
    EXPECT_EQ(axis.at("high"), 2000) << name;
    EXPECT_EQ(axis.at("logarithmic"), false) << name;
  }
  for (const double degrees :
       numbers(answer, answer.document.at("panels").at("phase").at("curves").at(0).at("y")))
    EXPECT_FALSE(std::abs(degrees) > 180) << degrees;
}

TEST_F(SessionTest, TwoFiltersAreDrawnTogether) {
  Json request = live(butterworth, {"level", "difference"});
  request["other"] = {{"topology", {"butterworth"}}, {"order", {8}}, {"frequency", {1000}}};
  const page::Answer answer = ask("live", request);
  EXPECT_EQ(answer.document.at("panels").at("level").at("curves").size(), 2);
  EXPECT_EQ(answer.document.at("panels").at("difference").at("curves").size(), 1);
  EXPECT_THAT(answer.document.at("other").at("title").get<std::string>(), HasSubstr("order 8"));
}

TEST_F(SessionTest, TheRateFollowsTheAudio) {
  Json request = live(butterworth, {});
  request["audio_rate"] = 44100;
  const Json design = ask("live", request).document.at("design");
  EXPECT_EQ(design.at("samplerate"), 44100);
  // A terminal knows of no audio.
  EXPECT_THAT(design.at("command").get<std::vector<std::string>>(),
              AllOf(Contains("--samplerate"), Contains("44100")));
  Json given = request;
  given["settings"]["samplerate"] = {44100};
  EXPECT_EQ(ask("live", given).document.at("design").at("dictionary"), design.at("dictionary"));
  // And no longer than it is on.
  EXPECT_EQ(ask("live", live(butterworth, {})).document.at("design").at("samplerate"), 48000);
}

TEST_F(SessionTest, ACutoffStaysWhereItIsWhenAudioIsSwitchedOn) {
  Json request = live(Json::object(), {});
  const Json before = ask("live", request).document.at("design");
  request["audio_rate"] = 44100;
  const Json design = ask("live", request).document.at("design");
  EXPECT_EQ(design.at("settings").at("frequency"), before.at("settings").at("frequency"));
  EXPECT_EQ(design.at("command"), Json({"veltane", "design", "--samplerate", "44100"}));
  EXPECT_EQ(ask("describe").document.at("fresh").at("frequency"),
            before.at("settings").at("frequency"));
}

TEST_F(SessionTest, ADocumentOpensAgain) {
  const std::string text = ask("document", {{"settings", butterworth}}).document.at("text");
  const Json opened = ask("open", {{"text", text}, {"name", "a.json"}}).document;
  EXPECT_EQ(opened.at("settings").at("frequency"), Json({1000.0}));
  EXPECT_EQ(opened.at("settings").at("topology"), Json({"butterworth"}));
}

TEST_F(SessionTest, AWrongFileIsNamedAndShowsNoHiddenCharacters) {
  const Json answer = ask("open", {{"text", "JFIF"}, {"name", "a\x1b[2J.jpg"}}).document;
  EXPECT_THAT(answer.value("refused", ""), AllOf(HasSubstr(".jpg"), Not(HasSubstr("\x1b"))));
}

TEST_F(SessionTest, AVerdictHasTheWordsOfTheTerminal) {
  const Json verdict =
      ask("verdict", {{"settings", {{"order", {4}}, {"frequency", {100000}}}}}).document;
  EXPECT_EQ(verdict.at("problems"), 1);
  EXPECT_THAT(verdict.at("findings").dump(), HasSubstr("100000 Hz is too high"));
}

TEST_F(SessionTest, ALayoutSaysWhichCommandWritesIt) {
  const Json layout =
      ask("layout", {{"settings", butterworth}, {"target", "csv"}, {"normalise", true}}).document;
  EXPECT_EQ(layout.at("command"),
            Json({"veltane", "export", "--for", "csv", "--topology", "butterworth", "--order", "4",
                  "--frequency", "1000", "--normalise"}));
  EXPECT_THAT(layout.at("text").get<std::string>(), HasSubstr("--normalise"));
}

TEST_F(SessionTest, AnEstimateRecommendsOneFamily) {
  const Json found = ask("estimate", {{"passband", {1000}},
                                      {"stopband", {2000}},
                                      {"ripple", 1},
                                      {"attenuation", 60},
                                      {"samplerate", 48000}})
                         .document;
  EXPECT_EQ(found.at("response"), "lowpass");
  const auto &list = found.at("candidates");
  ASSERT_EQ(list.size(), 3);
  EXPECT_EQ(std::count_if(list.begin(), list.end(),
                          [](const Json &one) { return one.at("recommended") == true; }),
            1);
}

class WrongRequests : public SessionTest, public testing::WithParamInterface<const char *> {};

TEST_P(WrongRequests, AreRefusedInASentence) {
  const Json answer = session.answer(GetParam()).document;
  EXPECT_THAT(answer.value("refused", ""), Not(IsEmpty())) << answer.dump();
  EXPECT_EQ(ask("live", live(butterworth, {})).document.count("design"), 1);
}

INSTANTIATE_TEST_SUITE_P(
    SessionTest, WrongRequests,
    testing::Values("", "{", "[]", "null", "\xff", R"({"do": 3})", R"({"do": "dance"})",
                    R"({"do": "live"})", R"({"do": "live", "settings": 3, "panels": []})",
                    R"({"do": "live", "settings": {"order": {}}, "panels": []})",
                    R"({"do": "live", "settings": {"size": [3]}, "panels": []})",
                    R"({"do": "live", "settings": {}, "panels": "level"})",
                    R"({"do": "live", "settings": {}, "panels": [3]})",
                    R"({"do": "live", "settings": {}, "panels": [], "audio_rate": 0})",
                    R"({"do": "live", "settings": {}, "panels": [], "audio_rate": "high"})",
                    R"({"do": "layout", "settings": {}})",
                    R"({"do": "layout", "settings": {}, "target": "cobol"})",
                    R"({"do": "estimate", "passband": [1000], "stopband": [2000], "ripple": 1})",
                    R"({"do": "estimate", "passband": [1000], "stopband": [1000], "ripple": 1,
            "attenuation": 60, "samplerate": 48000})",
                    R"({"do": "estimate", "passband": [1000], "stopband": [2000], "ripple": 1,
            "attenuation": 60, "samplerate": 0})",
                    R"({"do": "open", "text": "{}"})",
                    R"({"do": "open", "text": "{", "name": "a"})"));

TEST_F(SessionTest, AViewThatShowsNothingLeavesTheDesign) {
  for (const Json &view : {Json{{"low", 3}, {"high", 2}}, Json{{"low", -1}, {"high", 2}},
                           Json{{"low", 0}, {"high", 1000}}, Json{{"low", 3}}, Json(3)}) {
    Json request = live(butterworth, {"level"});
    request["view"] = view;
    const Json answer = ask("live", request).document;
    EXPECT_NE(answer.at("undrawable"), "") << view.dump();
    EXPECT_TRUE(answer.contains("design")) << view.dump();
  }
}

}  // namespace
}  // namespace tests
