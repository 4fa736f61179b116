// Sections as other programs write them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "designer/foreign_sections.h"
#include "designer/refusal.h"

using designer::parse_foreign_sections;
using testing::HasSubstr;

namespace {

using Numbers = std::vector<double>;

Numbers flat(const std::string &text) {
  Numbers numbers;
  for (const analysis::Section &s : parse_foreign_sections(text, "'f'").sections)
    numbers.insert(numbers.end(), {s.b0, s.b1, s.b2, s.a1, s.a2});
  return numbers;
}

std::string refusal(const std::string &text) {
  try {
    parse_foreign_sections(text, "'f'");
  } catch (const designer::Refusal &refused) {
    return refused.what();
  }
  return "";
}

const Numbers two{1, 2, 1, -0.5, 0.25, 3, 0, 0, -0.125, 0};

}  // namespace

TEST(ForeignSections, ColumnsAreSeparatedAsTheirAuthorsLike) {
  EXPECT_EQ(flat("1,2,1,-0.5,0.25\n3,0,0,-0.125,0\n"), two);
  EXPECT_EQ(flat("\xef\xbb\xbf\"b0\",b1,b2,a1,a2\r\n\"1\",2 , 1,-0.5,0.25\r\n3,0,0,-0.125,0\r\n"),
            two);
  EXPECT_EQ(flat("1;2;1;-0.5;0.25\r\n3;0;0;-0.125;0"), two);
  EXPECT_EQ(flat("1\t2\t1\t-0.5\t0.25\n\n3 0  0 -0.125 0\n"), two);
  EXPECT_EQ(flat("+1.0e0, 2, 1, -5E-1, .25\n3, 0, 0, -0.125, 0."), two);
}

TEST(ForeignSections, SixNumbersHaveTheirA0Divided) {
  EXPECT_EQ(flat("1 2 1 1 -0.5 0.25\n6 0 0 2 -0.25 0"), two);
}

TEST(ForeignSections, NamesAndCommentsArePassedOver) {
  EXPECT_EQ(flat("# made, by hand [1]\nb0,b1,b2,a1,a2\n1,2,1,-0.5,0.25 // first\n3,0,0,-0.125,0"),
            two);
  EXPECT_EQ(flat("B0 B1 B2 A0 A1 A2\n1 2 1 1 -0.5 0.25 % first\n3 0 0 1 -0.125 0"), two);
}

TEST(ForeignSections, MatricesAreReadFromTheSourcesOfThreeLanguages) {
  EXPECT_EQ(flat("import numpy\nsos = numpy.array([\n    [1, 2, 1, 1.0, -0.5, 0.25],\n    "
                 "[3.0, 0.0, 0.0, 1.0, -0.125, 0.0],\n])\n"),
            two);
  EXPECT_EQ(flat("sos = [\n  1 2 1 1 -0.5 0.25\n  3 0 0 1 -0.125 0\n];\n"), two);
  EXPECT_EQ(flat("sos = [1, 2, 1, 1, -0.5, 0.25; 3, 0, 0, 1, -0.125, 0];"), two);
}

TEST(ForeignSections, RowsOfNumPyGoOverSeveralLines) {
  EXPECT_EQ(flat("[[ 1.    2.    1.    1.   -0.5\n   0.25 ]\n [ 3.    0.    0.    1.   -0.125\n"
                 "   0.   ]]\n"),
            two);
}

TEST(ForeignSections, JsonSaysItsSampleRate) {
  const char *text = R"({"samplerate": 44100, "sections": [[1, 2, 1, -0.5, 0.25],
                         [3, 0, 0, -0.125, 0]], "notes": ["[", "# none"]})";
  EXPECT_EQ(flat(text), two);
  EXPECT_EQ(parse_foreign_sections(text, "'f'").samplerate, 44100.0);
  EXPECT_FALSE(parse_foreign_sections("1,2,1,-0.5,0.25", "'f'").samplerate.has_value());
}

TEST(ForeignSections, WhatIsNotSectionsIsRefusedInASentence) {
  EXPECT_EQ(refusal(""), "'f' holds no sections");
  EXPECT_EQ(refusal("# nothing"), "'f' holds no sections");
  EXPECT_EQ(refusal("1,2,1,-0.5,0.25\n1,2,x,4,5"),
            "section 2 of 'f' has 'x', which is not a finite number");
  EXPECT_THAT(refusal("1,2,1,nan,0.25"), HasSubstr("'nan', which is not a finite number"));
  EXPECT_THAT(refusal("1,2,1,1e999,0.25"), HasSubstr("not a finite number"));
  EXPECT_EQ(
      refusal("1,2,1,4"),
      "section 1 of 'f' has 4 numbers; all have 5 (b0 b1 b2 a1 a2) or all have 6 (b0 b1 b2 a0 "
      "a1 a2)");
  EXPECT_THAT(refusal("1 2 1 -0.5 0.25\n1 2 1 1 -0.5 0.25"), HasSubstr("section 2 of 'f' has 6"));
  EXPECT_EQ(refusal("1 2 1 0 -0.5 0.25"), "section 1 of 'f' has an a0 of 0");
  EXPECT_THAT(refusal("1 2 1 1e-300 -1e300 0"), HasSubstr("overflows when it is divided"));
  EXPECT_EQ(refusal("a0,a1,a2,b0,b1,b2\n1,-0.5,0.25,1,2,1"),
            "the columns of 'f' are a0,a1,a2,b0,b1,b2; sections are b0,b1,b2,a1,a2 or "
            "b0,b1,b2,a0,a1,a2");
  EXPECT_EQ(refusal("1,,1,1,-0.5,0.2"), "section 1 of 'f' has an empty column");
  EXPECT_EQ(refusal("1\t2\t1\t\t0.2"), "section 1 of 'f' has an empty column");
  EXPECT_EQ(refusal("1;2;1;-1;0,25"),
            "section 1 of 'f' has '0,25', with a decimal comma; numbers have decimal points here");
  EXPECT_THAT(refusal(",b0,b1,b2,a1,a2\n0,1,2,1,-0.5,0.2"),
              HasSubstr("the columns of 'f' are ,b0"));
  EXPECT_EQ(refusal("b0,b1,b2,a0,a1,a2\n1,2,1,-0.5,0.2"),
            "section 1 of 'f' has 5 numbers under 6 names");
  EXPECT_THAT(refusal("b = [1 2 3 2 1]\na = [1 -0.5 0.3 -0.1 0.02]"), HasSubstr("several lists"));
  EXPECT_THAT(refusal(std::string("1\0002", 3)), HasSubstr("is not text"));
  EXPECT_THAT(refusal("[[1,2,1,-0.5,0.25]"), HasSubstr("brackets that do not match"));
  EXPECT_THAT(refusal("1,2,1,-0.5,0.25]"), HasSubstr("brackets that do not match"));
  EXPECT_THAT(refusal("[[[1,2,1,-0.5,0.25]]]"), HasSubstr("brackets that do not match"));
  EXPECT_THAT(refusal("{\"settings\": {}}"), HasSubstr("no list of \"sections\""));
  EXPECT_THAT(refusal("{\"sections\": [1, 2]}"), HasSubstr("has 0 numbers"));
  EXPECT_THAT(refusal("{\"sections\": ["), HasSubstr("is not JSON"));
}

TEST(ForeignSections, AsManyAreTakenAsTheHighestOrderHas) {
  std::string rows;
  for (int i = 0; i < 200; ++i) rows += "1,2,1,-0.5,0.25\n";
  EXPECT_EQ(flat(rows).size(), 1000U);
  EXPECT_EQ(refusal(rows + "1,2,1,-0.5,0.25\n"), "'f' has 201 rows; up to 200 sections are taken");
}
