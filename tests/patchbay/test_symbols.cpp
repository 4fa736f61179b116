// Interning goes by the text and by nothing else: not by where the text stands, and
// not by what a hash makes of it.

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/symbols.h"

namespace {

// Texts of one hash, in the table's own hash as GCC's library has it: its two blocks of
// eight bytes can be solved for each other.
const std::vector<std::vector<const char *>> collisions = {
    {"6gssa7uj6euxfluj", "tfry3gv23vqksmt7", "ccp4sreigr3tvelj", "setqbv0mxo9xsz8v"},
    {"7xyu21i0lya0u24r", "tg60vk2ssbl5syh6", "f2mbvqgzhyvoyn0c", "ai87n1v1sjg1191g"},
    {"hpaguykdp9o7yna2", "74pllaq2viw65sc3", "7vp9oje6vyoq81ih", "yywqnzrsvnuyd0hy"}};

t_symbol *interned_from_elsewhere(const char *text) {
  const std::string copy(text);
  return runtime::intern(copy.c_str());
}

#if defined(__GLIBCXX__) && defined(__LP64__)
TEST(CollidingSymbols, CollideIndeed) {
  for (const auto &texts : collisions)
    for (const char *text : texts)
      EXPECT_EQ(std::hash<std::string_view>()(text), std::hash<std::string_view>()(texts[0]));
}
#endif

TEST(CollidingSymbols, OfTwoTextsAreTwo) {
  for (const auto &texts : collisions) {
    std::set<t_symbol *> distinct;
    for (const char *text : texts) {
      t_symbol *symbol = runtime::intern(text);
      EXPECT_STREQ(symbol->name, text);
      distinct.insert(symbol);
    }
    EXPECT_EQ(distinct.size(), texts.size());
  }
}

// Asked for in turns: one that came later must not hide one that was there.
TEST(CollidingSymbols, OfOneTextAreOne) {
  for (const auto &texts : collisions) {
    std::vector<t_symbol *> first;
    first.reserve(texts.size());
    for (const char *text : texts) first.push_back(runtime::intern(text));
    for (int round = 0; round < 3; ++round)
      for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(interned_from_elsewhere(texts[i]), first[i]) << texts[i];
        EXPECT_STREQ(first[i]->name, texts[i]);
      }
  }
}

// So many that any table has several to a bucket, and grows in between.
TEST(ManySymbols, AreOneForEachText) {
  constexpr int count = 20000;
  const auto text = [](int i) { return "many" + std::to_string(i); };
  std::vector<t_symbol *> first;
  first.reserve(count);
  for (int i = 0; i < count; ++i) first.push_back(runtime::intern(text(i).c_str()));
  EXPECT_EQ(std::set<t_symbol *>(first.begin(), first.end()).size(), first.size());
  for (int i = 0; i < count; ++i) {
    ASSERT_EQ(runtime::intern(text(i).c_str()), first[static_cast<std::size_t>(i)]) << text(i);
    ASSERT_EQ(first[static_cast<std::size_t>(i)]->name, text(i));
  }
}

// Texts that differ at the end, in length, in case or in a byte above 127 alone.
TEST(AlikeSymbols, AreDifferentOnes) {
  const std::string base(100, 'x');
  std::set<t_symbol *> distinct;
  const std::vector<std::string> texts = {base,          base + "x",    base + "y", base + "Y",
                                          base + "\xc3", base + "\xc4", "",         " "};
  for (const std::string &text : texts) {
    t_symbol *symbol = runtime::intern(text.c_str());
    EXPECT_EQ(symbol->name, text);
    EXPECT_EQ(interned_from_elsewhere(text.c_str()), symbol);
    distinct.insert(symbol);
  }
  EXPECT_EQ(distinct.size(), texts.size());
}

// A new symbol with a text that somebody typed would be a second one of that text.
TEST(UniqueSymbols, AreTheOnlyOnesOfTheirText) {
  const std::string last = runtime::unique_symbol()->name;
  const std::size_t digits = last.find_first_of("0123456789");
  ASSERT_NE(digits, std::string::npos);
  const int number = std::stoi(last.substr(digits));
  for (int i = 1; i <= 10; ++i)
    runtime::intern((last.substr(0, digits) + std::to_string(number + i)).c_str());
  for (int i = 0; i < 20; ++i) {
    t_symbol *unique = runtime::unique_symbol();
    EXPECT_EQ(interned_from_elsewhere(unique->name), unique) << unique->name;
  }
}

}  // namespace
