// When an operation of the host fails, or memory runs out, the box carries on:
// no exception reaches the host, nothing leaks, what is published is whole or
// empty, and a filter that is published goes for no less than the next one.

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <new>

#include "box_test.h"

using testing::AnyOf;
using testing::Eq;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;
using testing::Test;

namespace {

// How many allocations of the module succeed before one fails; below 0, all.
long allocations_left = -1;
bool failed = false;

bool called_from_module(const void *address) {
  Dl_info info{};
  return dladdr(address, &info) != 0 && std::strcmp(info.dli_fname, VELTANE_MODULE) == 0;
}

// Whether the allocation that `caller` asks for is the one to fail.
bool fails(const void *caller) {
  if (allocations_left < 0 || !called_from_module(caller) || allocations_left-- != 0) return false;
  failed = true;
  return true;
}

}  // namespace

// The program's operators are the module's too.
void *operator new(std::size_t size) {
  void *memory = fails(__builtin_return_address(0)) ? nullptr : std::malloc(size != 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept {
  return std::malloc(size != 0 ? size : 1);
}

// So is its malloc, which Eigen asks for its matrices. The sanitizers have one of
// their own, which must stay.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)
extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *malloc(std::size_t size) {
  return fails(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}
#endif

void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }

namespace {

constexpr char exhausted[] =
    "could not design a filter: out of memory; the dictionary is unchanged";

// Every path of a design, with how many keys it publishes.
struct Case {
  const char *settings;
  std::size_t keys;
};

constexpr Case cases[] = {
    {"tf_output: 1", 10},
    {"tf_output: 1 topology: butterworth response: bandstop order: 4", 10},
    {"tf_output: 1 topology: chebyshev-1 response: bandpass order: 3", 10},
    {"zpk_output: 0 response: highpass", 5},
};

// How many keys a design publishes with the switches as the box holds them:
// what failed may have been the setting of one.
std::size_t whole(const patchbay::Host &host, Box box) {
  const auto on = [&](const char *attribute) {
    return host.get(box, attribute) != Values{t_long{0}};
  };
  return 4U + (on("tf_output") ? 2U : 0U) + (on("zpk_output") ? 3U : 0U) +
         (on("sos_output") ? 1U : 0U);
}

// Bangs a box. What it then publishes is whole or nothing.
void bang(patchbay::Host &host, Box box) {
  host.send(box, "bang");
  const Values name = host.get(box, "name");
  const auto dictionary = host.dictionary(name.empty() ? "" : patchbay::to_text(name[0]));
  EXPECT_THAT(dictionary.value_or(patchbay::Dictionary{}).size(), AnyOf(0U, whole(host, box)));
}

// What an untroubled box publishes with these settings.
patchbay::Dictionary right(patchbay::Host &host, const Case &design) {
  const Box box = host.make(std::string("veltane ") + design.settings);
  host.send(box, "bang");
  const auto dictionary = host.dictionary(patchbay::to_text(host.get(box, "name").at(0)));
  host.free(box);
  return dictionary.value_or(patchbay::Dictionary{});
}

patchbay::Dictionary right(const Case &design) {
  std::ostringstream printed;
  patchbay::Host host(printed);
  host.load(VELTANE_MODULE);
  return right(host, design);
}

// The life of a box in a host.
void live(patchbay::Host &host, const Case &design) {
  const Box box = host.make(std::string("veltane ") + design.settings);
  host.set(box, "order", {t_long{4}});
  host.run_deferred();
  bang(host, box);
  host.double_click(box);
  host.double_click(box);
  host.set(box, "name", {std::string("other")});
  host.audio_on();
  bang(host, box);
  host.free(box);
}

// A class that is offered is whole.
void expect_whole(const patchbay::Host &host) {
  const std::vector<std::string> classes = host.classes();
  if (std::find(classes.begin(), classes.end(), "veltane") == classes.end()) return;
  const auto attributes = host.attributes("veltane");
  EXPECT_THAT(attributes, SizeIs(12));
  for (const auto &attribute : attributes)
    for (const char *property : {"label", "category"})
      EXPECT_THAT(attribute.property(property), SizeIs(1)) << attribute.name;
}

// Makes the nth call of an operation fail, in the loading of the module or, with
// it loaded, in the life of a box. @return whether there was an nth call
bool fail(const std::string &operation, std::size_t nth, bool loading, const Case &design,
          const patchbay::Dictionary &expected) {
  SCOPED_TRACE(operation + ", call " + std::to_string(nth) + ", " + design.settings);
  std::ostringstream printed;
  patchbay::Host host(printed);
  patchbay::Inspector inspector(host);
  if (!loading) host.load(VELTANE_MODULE);
  inspector.fail(operation, nth);
  try {
    if (loading) host.load(VELTANE_MODULE);
    expect_whole(host);
    live(host, design);
  } catch (const patchbay::Error &) {
    // There is no class, or no box, without the operation that failed.
  }
  const bool happened = inspector.forget_failures() == 0;
  if (!loading) {
    EXPECT_TRUE(right(host, design) == expected) << "the next design is right";
  }
  // What could not be released is left, and nothing else.
  const bool releases =
      operation == "qelem_free" || operation == "object_free" || operation == "sysmem_freeptr";
  EXPECT_THAT(host.close(), SizeIs(Le(releases ? 1U : 0U)));
  return happened;
}

}  // namespace

TEST(Memory, TheBoxOutlivesTheFailureOfAnyOperationAtAnyCall) {
  const patchbay::Dictionary expected = right(cases[0]);
  for (const bool loading : {true, false})
    for (const std::string &operation : patchbay::Inspector::operations())
      for (std::size_t nth = 1; fail(operation, nth, loading, cases[0], expected); ++nth)
        if (Test::HasFailure()) return;
}

TEST(Memory, SoItDoesInEveryFamily) {
  for (const Case &design : cases) {
    const patchbay::Dictionary expected = right(design);
    for (const std::string &operation : patchbay::Inspector::operations())
      for (std::size_t nth = 1; fail(operation, nth, false, design, expected); nth += 1 + nth / 4)
        if (Test::HasFailure()) return;
  }
}

// All that the class is made of, except for three parts: what an object yields for a message
// is not promised, without a table of messages there is nothing to hide in it, and the
// common symbols are there from the first host of the process on.
TEST(Memory, AClassThatIsNotWholeIsNotOffered) {
  for (const std::string &operation : patchbay::Inspector::operations()) {
    if (operation == "object_method_imp" || operation == "class_extra_lookup" ||
        operation == "hashtab_lookup" || operation == "common_symbols_init")
      continue;
    bool happened = true;
    for (std::size_t nth = 1; happened && !Test::HasFailure(); ++nth) {
      SCOPED_TRACE(operation + ", call " + std::to_string(nth));
      std::ostringstream printed;
      patchbay::Host host(printed);
      patchbay::Inspector inspector(host);
      inspector.fail(operation, nth);
      host.load(VELTANE_MODULE);
      happened = inspector.forget_failures() == 0;
      EXPECT_EQ(host.classes().size(), happened ? 1U : 2U);
      if (happened) {
        EXPECT_THROW(host.make("veltane"), patchbay::Error);
        EXPECT_EQ(object_new_typed(gensym("box"), gensym("veltane"), 0, nullptr), nullptr);
      }
      EXPECT_THAT(host.close(), IsEmpty());
    }
  }
}

// What a design leaves when the nth call of an operation fails in it.
struct Left {
  bool happened;
  patchbay::Dictionary dictionary;
  std::vector<std::string> posts;
  std::size_t sent;
};

Left fail_in_design(const std::string &operation, std::size_t nth) {
  std::ostringstream printed;
  patchbay::Host host(printed);
  patchbay::Inspector inspector(host);
  host.load(VELTANE_MODULE);
  const Box box = host.make("veltane name: here tf_output: 1");
  host.send(box, "bang");
  host.set(box, "order", {t_long{4}});
  Left left{};
  host.listen(box, 0, [&](const std::string &, const Values &) { ++left.sent; });
  inspector.fail(operation, nth);
  host.send(box, "bang");
  left.happened = inspector.forget_failures() == 0;
  left.dictionary = host.dictionary("here").value();
  for (const patchbay::Post &post : host.posts()) left.posts.push_back(post.text);
  return left;
}

TEST(Memory, AFailedDesignAnnouncesNothingAndKeepsTheFilterThatIsThere) {
  const patchbay::Dictionary before = right({"tf_output: 1", 10});
  const patchbay::Dictionary after = right({"tf_output: 1 order: 4", 10});
  std::size_t kept = 0;
  std::size_t emptied = 0;
  for (const std::string &operation : patchbay::Inspector::operations()) {
    // Releasing, posting and sending take no part in a filter; what a message to an
    // object yields is not promised, and the cutoffs are stored anew, not changed.
    if (operation == "sysmem_freeptr" || operation == "object_free" ||
        operation == "object_error" || operation == "outlet_anything" ||
        operation == "object_method_imp" || operation == "object_attr_setdouble_array")
      continue;
    for (std::size_t nth = 1;; ++nth) {
      SCOPED_TRACE(operation + ", call " + std::to_string(nth));
      const Left left = fail_in_design(operation, nth);
      if (!left.happened) {
        EXPECT_TRUE(left.dictionary == after);
        EXPECT_EQ(left.sent, 1U);
        break;
      }
      const bool whole = left.dictionary == after;
      if (operation == "gensym" && whole) continue;  // the notice did without it
      EXPECT_EQ(left.sent, 0U);
      ASSERT_THAT(left.posts, SizeIs(1));
      const bool memory = operation == "gensym" || operation.starts_with("sysmem_");
      EXPECT_EQ(left.posts[0].find("out of memory") != std::string::npos, memory) << left.posts[0];
      const bool as_it_was = left.posts[0].ends_with("; the dictionary is unchanged");
      EXPECT_EQ(as_it_was, left.dictionary == before);
      EXPECT_EQ(!as_it_was, left.dictionary.empty());
      EXPECT_EQ(!as_it_was, left.posts[0].ends_with("; the dictionary is empty"));
      ++(as_it_was ? kept : emptied);
      if (Test::HasFailure()) return;
    }
  }
  EXPECT_GT(kept, 10U) << "the mathematics asks for memory, and nothing is lost when there is none";
  EXPECT_GT(emptied, 20U) << "publishing can fail half way";
}

TEST(Memory, ADictionaryThatCannotBeClearedKeepsItsFilter) {
  const Left left = fail_in_design("dictionary_clear", 1);
  EXPECT_TRUE(left.dictionary == right({"tf_output: 1", 10}));
  EXPECT_THAT(left.posts,
              testing::ElementsAre("could not design a filter: the host did not clear the "
                                   "dictionary; the dictionary is unchanged"));
}

TEST(Memory, TheBoxOutlivesExhaustedMemoryAtAnyAllocation) {
  for (const Case &design : cases) {
    const patchbay::Dictionary expected = right(design);
    long successes = 0;
    do {
      SCOPED_TRACE(std::to_string(successes) + " allocations succeed, " + design.settings);
      std::ostringstream printed;
      patchbay::Host host(printed);
      host.load(VELTANE_MODULE);
      const Box box = host.make(std::string("veltane name: here ") + design.settings);
      failed = false;
      allocations_left = successes++;
      host.send(box, "bang");
      allocations_left = -1;
      // A sort does without the memory that would make it faster; the filter is then whole.
      const bool ended = failed && !host.posts().empty();
      EXPECT_THAT(host.dictionary("here").value().size(), Eq(ended ? 0U : design.keys));
      EXPECT_EQ(host.posts().size(), ended ? 1U : 0U);
      if (ended) {
        EXPECT_EQ(host.posts().at(0).text, exhausted);
      }
      host.send(box, "bang");
      EXPECT_TRUE(host.dictionary("here").value() == expected) << "the next design is right";
      const std::size_t posts = host.posts().size();
      failed = false;
      allocations_left = successes - 1;
      host.send(box, "bang");
      allocations_left = -1;
      EXPECT_TRUE(host.dictionary("here").value() == expected) << "the filter stays";
      EXPECT_EQ(host.posts().size(), posts + (ended ? 1U : 0U));
      // The flag that a design runs is down again: changes schedule designs.
      host.set(box, "order", {t_long{6}});
      EXPECT_EQ(host.run_deferred(), 1U);
      EXPECT_THAT(host.close(), IsEmpty());
    } while (failed && !Test::HasFailure());
    EXPECT_GT(successes, 5) << "the module allocates, and the test has seen it";
  }
}
