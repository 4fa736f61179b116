// Texts of others, made fit to be shown.

#include <gtest/gtest.h>

#include "text/printable.h"

namespace {

std::string utf8(char32_t code) {
  const auto tail = [&](unsigned shift) {
    return static_cast<char>(0x80U | (static_cast<unsigned>(code >> shift) & 0x3fU));
  };
  if (code < 0x80) return {static_cast<char>(code)};
  if (code < 0x800) return {static_cast<char>(0xc0U | code >> 6U), tail(0)};
  if (code < 0x10000) return {static_cast<char>(0xe0U | code >> 12U), tail(6), tail(0)};
  return {static_cast<char>(0xf0U | code >> 18U), tail(12), tail(6), tail(0)};
}

bool is_shown(char32_t code) {
  return text::printable("a" + utf8(code) + "b") == "a" + utf8(code) + "b";
}

}  // namespace

// Every character of the Basic Multilingual Plane, and those at the ends of the others.
TEST(Printable, HidesTheseCharactersAndNoOthers) {
  const auto hidden = [](char32_t code) {
    return code < 0x20 || (code >= 0x7f && code <= 0x9f) || code == 0x061c || code == 0x200e ||
           code == 0x200f || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069) || code == 0xfffe || code == 0xffff;
  };
  for (char32_t code = 0; code < 0x10000; ++code) {
    if (code >= 0xd800 && code <= 0xdfff) continue;
    EXPECT_EQ(is_shown(code), !hidden(code)) << std::hex << static_cast<unsigned>(code);
  }
  for (const char32_t code : {0x10000U, 0x1f600U, 0x10ffffU}) EXPECT_TRUE(is_shown(code));
}

TEST(Printable, WritesWhatItHidesAsItsCode) {
  EXPECT_EQ(text::printable("a\n\x1b\x7f z"), "a\\x0a\\x1b\\x7f z");
  EXPECT_EQ(text::printable(std::string(1, '\0')), "\\x00");
  EXPECT_EQ(text::printable("\u0085\u2028\u202e"), "\\u0085\\u2028\\u202e");
  EXPECT_EQ(text::printable("]]>"), "]]\\x3e");
  EXPECT_EQ(text::printable("]>, ]]x>, >"), "]>, ]]x>, >");
  EXPECT_EQ(text::printable(text::printable("\xff\u2028]]>")), text::printable("\xff\u2028]]>"));
}

TEST(Printable, ReplacesBytesThatAreNotUtf8) {
  EXPECT_EQ(text::printable("\xff"), "\\xff");
  EXPECT_EQ(text::printable("\xc3("), "\\xc3(");
  EXPECT_EQ(text::printable("\xe2\x80"), "\\xe2\\x80") << "cut off";
  EXPECT_EQ(text::printable("\xc0\xaf"), "\\xc0\\xaf") << "overlong";
  EXPECT_EQ(text::printable("\xe0\x9f\xbf"), "\\xe0\\x9f\\xbf") << "overlong";
  EXPECT_EQ(text::printable("\xe0\xa0\x80"), "\xe0\xa0\x80");
  EXPECT_EQ(text::printable("\xf0\x8f\xbf\xbf"), "\\xf0\\x8f\\xbf\\xbf") << "overlong";
  EXPECT_EQ(text::printable("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "a surrogate";
  EXPECT_EQ(text::printable("\xed\xbf\xbf"), "\\xed\\xbf\\xbf") << "a surrogate";
  EXPECT_EQ(text::printable("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80")
      << "beyond the last character";
  EXPECT_EQ(text::printable("\xf5\x80\x80\x80"), "\\xf5\\x80\\x80\\x80");
}

// Characters of one to four bytes, cut at every place.
TEST(Shortened, CutsNoCharacter) {
  const std::string text = "a\u00e9\u20ac\U0001f600b\u00e9\u20ac\U0001f600c";
  for (std::size_t head = 0; head < text.size(); ++head)
    for (std::size_t tail = 0; head + tail < text.size(); ++tail) {
      const std::string cut = text::shortened(text, head, tail, "|");
      EXPECT_EQ(text::printable(cut), cut) << head << ' ' << tail;
      EXPECT_LE(cut.size(), text.size());
      if (cut == text) continue;
      const std::size_t mark = cut.find('|');
      EXPECT_LE(mark, head);
      EXPECT_GT(mark + 4, head) << "no more is left out than the cut character";
      EXPECT_LE(cut.size() - mark - 1, tail);
      EXPECT_GT(cut.size() - mark - 1 + 4, tail);
      EXPECT_TRUE(text.starts_with(cut.substr(0, mark)) && text.ends_with(cut.substr(mark + 1)));
    }
}

TEST(Shortened, LeavesWhatFits) {
  EXPECT_EQ(text::shortened("123456789", 3, 3, "..."), "123456789");
  EXPECT_EQ(text::shortened("1234567890", 3, 3, "..."), "123...890");
}
