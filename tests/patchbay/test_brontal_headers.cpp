// The headers of the interface against the host: each function that they
// declare is an operation of the host. That they compile, alone and together,
// in both languages, is the library test-brontal-headers.

#include <dlfcn.h>

#include <fstream>
#include <iterator>
#include <set>

#include "host_test.h"

namespace tests {
namespace {

// The names of the functions that the headers mark as the host's: for each mark
// that begins a line, the word in front of the first parenthesis.
std::set<std::string> declared_functions() {
  const std::string mark = "\nBRONTAL_API ";
  std::set<std::string> names;
  for (const auto &entry : std::filesystem::directory_iterator(BRONTAL_HEADERS)) {
    std::ifstream file(entry.path());
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
      const std::size_t end = text.find_first_of("(;", at);
      if (end == std::string::npos || text[end] == ';') continue;  // a variable
      const std::size_t before = text.find_last_of(" *\n", end);
      names.insert(text.substr(before + 1, end - before - 1));
    }
  }
  return names;
}

TEST(Headers, DeclareTheOperationsOfTheHost) {
  const std::set<std::string> declared = declared_functions();
  ASSERT_THAT(declared, testing::IsSupersetOf({"gensym", "object_error", "sysmem_newptr"}));
  EXPECT_THAT(patchbay::Inspector::operations(), testing::UnorderedElementsAreArray(declared));
}

TEST(Headers, DeclareWhatTheHostExports) {
  for (const std::string &name : declared_functions())
    EXPECT_NE(dlsym(RTLD_DEFAULT, name.c_str()), nullptr) << name << " cannot be found by a module";
  EXPECT_NE(dlsym(RTLD_DEFAULT, "common_symbols"), nullptr);
}

TEST(Headers, MakeAZeroFilledAtomOneOfNothing) {
  const t_atom zero{};
  EXPECT_EQ(zero.type, ATOM_NOTHING);
}

class CommonSymbols : public HostTest {};

TEST_F(CommonSymbols, AreFilledOnceAndForAll) {
  ASSERT_NE(common_symbols, nullptr);
  during_load([] {
    EXPECT_STREQ(common_symbols->box->name, "box");
    EXPECT_STREQ(common_symbols->name->name, "name");
    EXPECT_STREQ(common_symbols->getname->name, "getname");
    EXPECT_STREQ(common_symbols->edit->name, "edit");
    EXPECT_STREQ(common_symbols->attr_modified->name, "attr_modified");
    const t_symbol *box = common_symbols->box;
    common_symbols_init();
    EXPECT_EQ(common_symbols->box, box);
    EXPECT_EQ(gensym("box"), box);
  });
}

// In a process of its own, where no test has filled the table yet.
TEST(CommonSymbolsDeathTest, AreNullBeforeTheyAreFilled) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto check = [] {
    const bool null = common_symbols != nullptr && common_symbols->box == nullptr &&
                      common_symbols->name == nullptr && common_symbols->getname == nullptr &&
                      common_symbols->edit == nullptr && common_symbols->attr_modified == nullptr;
    std::_Exit(null ? 0 : 1);
  };
  EXPECT_EXIT(check(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tests
