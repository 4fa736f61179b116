// JSON as it is written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "../hidden_texts.h"
#include "text/json.h"
#include "text/numbers.h"
#include "text/printable.h"

using text::Json;
using text::JsonLayout;
using text::JsonWriter;

namespace {

std::string written(const Json &document, JsonLayout layout) {
  JsonWriter writer(layout);
  writer.value(document);
  return writer.take();
}

}  // namespace

TEST(JsonString, EscapesWhatIsHiddenAndKeepsTheValue) {
  for (const std::string &hidden : tests::hidden_texts()) {
    const std::string json = text::json_string("x" + hidden + "y");
    EXPECT_EQ(text::printable(json), json);
  }
  for (const std::string &hidden : tests::hidden_characters())
    EXPECT_EQ(Json::parse(text::json_string("x" + hidden + "y")), "x" + hidden + "y");
  EXPECT_EQ(text::json_string("\u00e9]]>\u2028"), "\"\u00e9]]\\u003e\\u2028\"");
}

TEST(JsonWriter, KeepsOneLineOrGivesEachMemberOne) {
  const Json document{{"a", 1}, {"b", {1.5, "x", nullptr}}, {"c", {{"d", true}}}};
  EXPECT_EQ(written(document, JsonLayout::line),
            R"({"a": 1, "b": [1.5, "x", null], "c": {"d": true}})");
  EXPECT_EQ(written(document, JsonLayout::page),
            "{\n  \"a\": 1,\n  \"b\": [1.5, \"x\", null],\n  \"c\": {\n    \"d\": true\n  }\n}");
}

TEST(JsonWriter, IndentsObjectsInAListByTheObjectsAroundThem) {
  EXPECT_EQ(
      written(Json{{"list", Json::array({Json{{"a", 1}}, Json{{"a", 2}}})}}, JsonLayout::page),
      "{\n  \"list\": [{\n    \"a\": 1\n  }, {\n    \"a\": 2\n  }]\n}");
}

TEST(JsonWriter, ReadsBackToTheSameDocument) {
  const Json document{{"empty", Json::object()},
                      {"none", Json::array()},
                      {"deep", {{"er", {{"still", {1, 2.25, {{"x", "y"}}}}}}}},
                      {"quote", "\"\\/\n"},
                      {"least", std::numeric_limits<double>::denorm_min()},
                      {"large", std::numeric_limits<std::int64_t>::min()}};
  for (const JsonLayout layout : {JsonLayout::line, JsonLayout::page})
    EXPECT_EQ(Json::parse(written(document, layout)), document);
}

TEST(JsonWriter, WritesNullForWhatIsNotFinite) {
  JsonWriter writer(JsonLayout::line);
  writer.begin_list();
  for (const double number : {1.0, std::nan(""), HUGE_VAL, -HUGE_VAL}) writer.number(number);
  writer.end_list();
  EXPECT_EQ(writer.take(), "[1.0, null, null, null]");
}

TEST(JsonWriter, BeginsAnewOnceItsTextIsTaken) {
  JsonWriter writer(JsonLayout::line);
  writer.texts({"a", "b"});
  EXPECT_EQ(writer.take(), R"(["a", "b"])");
  writer.begin_object();
  writer.key("n");
  writer.integer(-7);
  writer.end_object();
  EXPECT_EQ(writer.take(), R"({"n": -7})");
  EXPECT_EQ(writer.take(), "");
}

TEST(JsonPage, EndsWithANewline) {
  EXPECT_EQ(text::json_page(Json{{"a", 1}}), "{\n  \"a\": 1\n}\n");
}

TEST(JsonWriter, WritesNumbersThatComeAgainAsItWroteThem) {
  JsonWriter writer(JsonLayout::line);
  std::string expected = "[";
  writer.begin_list();
  for (const int round : {1, 2}) {
    for (double value = 0.1; value < 100.0; value *= 1.07) {
      for (const double number : {value, -value, 0.0, -0.0, round * 1e300}) {
        writer.number(number);
        expected += (expected == "[" ? "" : ", ") + text::double_text(number);
      }
    }
  }
  writer.end_list();
  EXPECT_EQ(writer.take(), expected + "]");
}
