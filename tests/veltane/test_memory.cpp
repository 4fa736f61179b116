// When an operation of the host fails, or memory runs out, the box carries on:
// no exception reaches the host, nothing leaks, and what is published is whole
// or empty.

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

void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }

namespace {

constexpr char exhausted[] = "out of memory: no filter was designed, and the dictionary is empty";

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

// A module's life in a host: loaded, one box made, used and freed.
void live(patchbay::Host &host, const Case &design) {
  host.load(VELTANE_MODULE);
  const Box box = host.make(std::string("veltane ") + design.settings);
  host.set(box, "response", {std::string("bandpass")});
  host.run_deferred();
  bang(host, box);
  host.double_click(box);
  host.double_click(box);
  host.set(box, "name", {std::string("other")});
  host.audio_on();
  bang(host, box);
  host.free(box);
}

}  // namespace

TEST(Memory, TheBoxOutlivesTheFailureOfAnyOperationAtAnyCall) {
  for (const std::string &operation : patchbay::Host::operations()) {
    bool happened = true;
    for (std::size_t nth = 1; happened && !Test::HasFailure(); nth += 1 + nth / 16) {
      const Case &design = cases[nth % std::size(cases)];
      SCOPED_TRACE(operation + ", call " + std::to_string(nth) + ", " + design.settings);
      std::ostringstream printed;
      patchbay::Host host(printed);
      host.fail(operation, nth);
      try {
        live(host, design);
      } catch (const patchbay::Error &) {
        // There is no class, or no box, without the operation that failed.
      }
      happened = host.forget_failures() == 0;
      // What could not be released is left, and nothing else.
      const bool releases =
          operation == "qelem_free" || operation == "object_free" || operation == "sysmem_freeptr";
      EXPECT_THAT(host.close(), SizeIs(Le(releases ? 1U : 0U)));
    }
  }
}

TEST(Memory, TheBoxOutlivesExhaustedMemoryAtAnyAllocation) {
  for (const Case &design : cases) {
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
      EXPECT_THAT(host.dictionary("here").value().size(), Eq(failed ? 0U : design.keys));
      EXPECT_EQ(host.posts().size(), failed ? 1U : 0U);
      if (failed) {
        EXPECT_EQ(host.posts().at(0).text, exhausted);
      }
      // The flag that a design runs is down again: changes schedule designs.
      host.set(box, "order", {t_long{6}});
      EXPECT_EQ(host.run_deferred(), 1U);
      EXPECT_THAT(host.dictionary("here").value().size(), Eq(design.keys));
      EXPECT_THAT(host.close(), IsEmpty());
    } while (failed && !Test::HasFailure());
    EXPECT_GT(successes, 5) << "the module allocates, and the test has seen it";
  }
}
