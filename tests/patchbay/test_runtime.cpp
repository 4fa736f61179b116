// Blocks and symbols: the implementation of the memory calls and the symbols of
// every host, and the same calls without a host.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <set>
#include <thread>

#include "host_test.h"
#include "runtime/blocks.h"
#include "runtime/symbols.h"

namespace tests {
namespace {

constexpr t_long too_large = std::numeric_limits<t_long>::max();

bool is_zero(const void *block, std::size_t from, std::size_t to) {
  const auto *bytes = static_cast<const unsigned char *>(block);
  return std::all_of(bytes + from, bytes + to, [](unsigned char byte) { return byte == 0; });
}

// The memory calls, as a set that the same tests go through.
struct Calls {
  void *(*make)(t_long);
  void *(*make_clear)(t_long);
  void *(*resize)(void *, t_long);
  void (*free)(void *);
};

const Calls of_the_host{sysmem_newptr, sysmem_newptrclear, sysmem_resizeptrclear, sysmem_freeptr};
const Calls of_the_runtime{[](t_long size) { return runtime::new_block(size, false); },
                           [](t_long size) { return runtime::new_block(size, true); },
                           runtime::resize_block, runtime::free_block};

void expect_alignment(const Calls &calls) {
  for (const t_long size : {0, 1, 7, 8, 100}) {
    void *block = calls.make(size);
    ASSERT_NE(block, nullptr) << size;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U) << size;
    calls.free(block);
  }
}

void expect_clearing(const Calls &calls) {
  for (int i = 0; i < 3; ++i) {  // memory that was written to may come back
    void *block = calls.make_clear(200);
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(is_zero(block, 0, 200));
    std::memset(block, 1, 200);
    calls.free(block);
  }
}

void expect_resizing(const Calls &calls) {
  auto *block = static_cast<unsigned char *>(calls.resize(nullptr, 100));
  ASSERT_NE(block, nullptr) << "null asks for a new block";
  EXPECT_TRUE(is_zero(block, 0, 100)) << "which is cleared";
  std::memset(block, 7, 100);
  block = static_cast<unsigned char *>(calls.resize(block, 4000));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(block[0], 7);
  EXPECT_EQ(block[99], 7);
  EXPECT_TRUE(is_zero(block, 100, 4000));
  std::memset(block, 8, 4000);
  block = static_cast<unsigned char *>(calls.resize(block, 10));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(block[9], 8);
  block = static_cast<unsigned char *>(calls.resize(block, 100));
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(block[9], 8);
  EXPECT_TRUE(is_zero(block, 10, 100)) << "what was cut off does not come back";
  block = static_cast<unsigned char *>(calls.resize(block, 0));
  ASSERT_NE(block, nullptr) << "a block of nothing is a block";
  block = static_cast<unsigned char *>(calls.resize(block, 8));
  EXPECT_TRUE(is_zero(block, 0, 8));
  calls.free(block);
}

void expect_refusals(const Calls &calls) {
  for (const t_long size : {t_long{-1}, std::numeric_limits<t_long>::min(), too_large}) {
    EXPECT_EQ(calls.make(size), nullptr) << size;
    EXPECT_EQ(calls.make_clear(size), nullptr) << size;
    EXPECT_EQ(calls.resize(nullptr, size), nullptr) << size;
    auto *block = static_cast<char *>(calls.make_clear(8));
    std::strcpy(block, "kept");
    EXPECT_EQ(calls.resize(block, size), nullptr) << size;
    EXPECT_STREQ(block, "kept") << "the old block stands";
    calls.free(block);
  }
  calls.free(nullptr);
}

class Memory : public HostTest {};

TEST_F(Memory, IsAligned) { expect_alignment(of_the_host); }
TEST_F(Memory, IsCleared) { expect_clearing(of_the_host); }
TEST_F(Memory, IsResized) { expect_resizing(of_the_host); }
TEST_F(Memory, IsRefused) { expect_refusals(of_the_host); }

// A block of nothing must be freed all the same.
TEST_F(Memory, OfNoSizeIsABlock) {
  void *block = sysmem_newptr(0);
  EXPECT_THAT(inspector.leaks(), SizeIs(1));
  sysmem_freeptr(block);
}

TEST(MemoryWithoutAHost, IsAligned) { expect_alignment(of_the_host); }
TEST(MemoryWithoutAHost, IsCleared) { expect_clearing(of_the_host); }
TEST(MemoryWithoutAHost, IsResized) { expect_resizing(of_the_host); }
TEST(MemoryWithoutAHost, IsRefused) { expect_refusals(of_the_host); }

TEST(Blocks, AreAligned) { expect_alignment(of_the_runtime); }
TEST(Blocks, AreCleared) { expect_clearing(of_the_runtime); }
TEST(Blocks, AreResized) { expect_resizing(of_the_runtime); }
TEST(Blocks, AreRefused) { expect_refusals(of_the_runtime); }

// The sanitizers end a program that asks for so much.
#ifndef __SANITIZE_ADDRESS__
TEST(Blocks, ThatThereIsNoMemoryForAreHeardOfByTheNewHandler) {
  constexpr t_long beyond_memory = t_long{1} << 60;
  static int calls;
  auto *block = static_cast<char *>(runtime::new_block(8, true));
  std::strcpy(block, "kept");
  const auto calls_for = [](void *(*make)(void *), void *given) {
    calls = 0;
    EXPECT_EQ(make(given), nullptr);
    return calls;
  };
  const auto plain = [](void *) { return runtime::new_block(beyond_memory, false); };
  const auto clear = [](void *) { return runtime::new_block(beyond_memory, true); };
  const auto resized = [](void *given) { return runtime::resize_block(given, beyond_memory); };
  const auto impossible = [](void *) { return runtime::new_block(-1, false); };
  const std::new_handler before = std::set_new_handler([] {
    if (++calls == 3) throw std::bad_alloc();  // until then it hopes that some was released
  });
  EXPECT_EQ(calls_for(plain, nullptr), 3);
  EXPECT_EQ(calls_for(clear, nullptr), 3);
  EXPECT_EQ(calls_for(resized, block), 3);
  EXPECT_EQ(calls_for(impossible, nullptr), 0) << "memory has no part in it";
  std::set_new_handler(nullptr);
  EXPECT_EQ(calls_for(plain, nullptr), 0);
  std::set_new_handler(before);
  EXPECT_STREQ(block, "kept");
  runtime::free_block(block);
}
#endif

TEST(Blocks, KnowTheirSize) {
  void *block = runtime::new_block(12, false);
  EXPECT_EQ(runtime::block_size(block), 12);
  block = runtime::resize_block(block, 300);
  EXPECT_EQ(runtime::block_size(block), 300);
  runtime::free_block(block);
}

TEST(Symbols, OfOneTextAreOne) {
  std::string text = "a text";
  t_symbol *symbol = runtime::intern(text.c_str());
  text[0] = 'x';  // it is read during the call and never kept
  EXPECT_STREQ(symbol->name, "a text");
  EXPECT_EQ(runtime::intern("a text"), symbol);
  EXPECT_NE(runtime::intern("another text"), symbol);
  EXPECT_EQ(runtime::intern(nullptr), runtime::intern(""));
  EXPECT_STREQ(runtime::intern("")->name, "");
}

TEST(Symbols, StayWhereTheyAre) {
  t_symbol *first = runtime::intern("stays");
  for (int i = 0; i < 5000; ++i) runtime::intern(("filler" + std::to_string(i)).c_str());
  EXPECT_EQ(runtime::intern("stays"), first);
  EXPECT_STREQ(first->name, "stays");
}

TEST(Symbols, ThatAreUniqueAreNew) {
  std::set<std::string> seen;
  for (int i = 0; i < 100; ++i) {
    t_symbol *unique = runtime::unique_symbol();
    EXPECT_TRUE(seen.insert(unique->name).second) << unique->name;
    EXPECT_EQ(runtime::intern(unique->name), unique);
  }
}

// A user may have typed what would be the next one.
TEST(Symbols, ThatAreUniqueEvadeWhatWasTyped) {
  const std::string last = runtime::unique_symbol()->name;
  std::set<t_symbol *> typed;
  const std::size_t digits = last.find_first_of("0123456789");
  ASSERT_NE(digits, std::string::npos);
  const int number = std::stoi(last.substr(digits));
  for (int i = 1; i <= 10; ++i)
    typed.insert(runtime::intern((last.substr(0, digits) + std::to_string(number + i)).c_str()));
  EXPECT_FALSE(typed.contains(runtime::unique_symbol()));
}

TEST(Symbols, AreInternedFromSeveralThreads) {
  std::vector<std::vector<t_symbol *>> found(4);
  {
    std::vector<std::jthread> threads;
    for (auto &list : found)
      threads.emplace_back([&list] {
        for (int i = 0; i < 500; ++i)
          list.push_back(runtime::intern(("shared" + std::to_string(i)).c_str()));
      });
  }
  for (const auto &list : found) EXPECT_EQ(list, found[0]);
}

class HostSymbols : public HostTest {};

TEST_F(HostSymbols, AreInterned) {
  EXPECT_EQ(gensym("x"), gensym("x"));
  EXPECT_NE(gensym("x"), gensym("y"));
  EXPECT_STREQ(gensym(nullptr)->name, "");
  EXPECT_EQ(gensym_tr("x"), gensym("x"));
  EXPECT_EQ(str_tr("x"), gensym("x")->name);
  EXPECT_STREQ(str_tr(nullptr), "");
  EXPECT_NE(symbol_unique(), symbol_unique());
}

TEST(Symbols, OutliveTheHost) {
  t_symbol *symbol = nullptr;
  {
    patchbay::Host host;
    symbol = gensym("kept");
  }
  EXPECT_STREQ(symbol->name, "kept");
  EXPECT_EQ(gensym("kept"), symbol) << "they can be made without a host";
}

class Atoms : public HostTest {};

TEST_F(Atoms, HoldWhatTheyAreGiven) {
  t_atom value{};
  EXPECT_EQ(atom_setfloat(&value, 2.5), RESULT_OK);
  EXPECT_EQ(value.type, ATOM_FLOAT);
  EXPECT_EQ(value.value.number, 2.5);
  EXPECT_EQ(atom_getsym(&value), gensym("")) << "it holds no symbol";
  EXPECT_EQ(atom_setsym(&value, gensym("x")), RESULT_OK);
  EXPECT_EQ(value.type, ATOM_SYMBOL);
  EXPECT_EQ(atom_getsym(&value), gensym("x"));
}

}  // namespace
}  // namespace tests
