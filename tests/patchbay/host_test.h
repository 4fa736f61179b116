/**
 * What the tests of patchbay share: a host that must end with nothing wrong,
 * unless a test says what, and short ways to look at things.
 */
#ifndef TESTS_PATCHBAY_HOST_TEST_H
#define TESTS_PATCHBAY_HOST_TEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "../watchdog.h"
#include "brontal/brontal.h"
#include "patchbay/host.h"
#include "patchbay/inspector.h"

namespace tests {

using patchbay::Box;
using patchbay::Values;
using testing::_;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

/** @return the file of a module in modules/ or modules/faults/. */
inline std::filesystem::path module(const std::string &name) {
  return std::filesystem::path(PATCHBAY_MODULES) / (name + ".so");
}

/** @return why a request is refused; a request that is not refused fails the test. */
template <typename Request>
std::string refusal(Request &&request) {
  try {
    request();
  } catch (const patchbay::Error &error) {
    return error.what();
  }
  ADD_FAILURE() << "the request was carried out";
  return "";
}

inline std::string in_one_line(const std::string &first, const Values &rest) {
  std::string text = first;
  for (const patchbay::Value &value : rest) text += ' ' + patchbay::to_text(value);
  return text;
}

inline std::vector<std::string> texts(const std::vector<patchbay::Call> &calls) {
  std::vector<std::string> list;
  for (const patchbay::Call &call : calls) list.push_back(call.text());
  return list;
}

inline std::vector<std::string> texts(const std::vector<patchbay::Post> &posts) {
  std::vector<std::string> list;
  for (const patchbay::Post &post : posts) list.push_back(post.source + ": " + post.text);
  return list;
}

inline t_atom atom(t_long value) {
  t_atom made{};
  made.type = ATOM_LONG;
  made.value.integer = value;
  return made;
}

inline t_atom atom(double value) {
  t_atom made{};
  made.type = ATOM_FLOAT;
  made.value.number = value;
  return made;
}

inline t_atom atom(const char *value) {
  t_atom made{};
  made.type = ATOM_SYMBOL;
  made.value.symbol = gensym(value);
  return made;
}

/** What the module calls_back runs as its start. */
inline std::function<void()> start;

template <typename Function>
t_method as_method(Function *function) {
  return reinterpret_cast<t_method>(function);
}

class HostTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(inspector.forget_failures(), 0U) << "a failure that was asked for did not happen";
    EXPECT_THAT(host.close(), problems_);
  }

  /** What `close` must report, as a matcher; nothing unless a test says so. */
  template <typename Matcher>
  void expect_problems(const Matcher &matcher) {
    problems_ = matcher;
  }

  /** Runs `body` inside the start function of a module. Once a test. */
  void during_load(std::function<void()> body) {
    start = std::move(body);
    host.load(module("calls_back"));
    start = nullptr;
  }

  Box counter(const std::string &arguments = "") { return make("counter", arguments); }
  Box observer(const std::string &arguments = "") { return make("observer", arguments); }

  /** Makes a box of a class whose module has its name, loading that first. */
  Box make(const std::string &name, const std::string &arguments = "") {
    const std::vector<std::string> known = host.classes();
    if (std::find(known.begin(), known.end(), name) == known.end()) host.load(module(name));
    return host.make(name + ' ' + arguments);
  }

  /** Writes down what leaves an outlet, in `heard`. */
  void listen(Box box, std::size_t outlet = 0) {
    host.listen(box, outlet, [this](const std::string &message, const Values &arguments) {
      heard.push_back(in_one_line(message, arguments));
    });
  }

  std::ostringstream printed;
  patchbay::Host host{printed};
  patchbay::Inspector inspector{host};
  std::vector<std::string> heard;

 private:
  testing::Matcher<const std::vector<std::string> &> problems_ = IsEmpty();
};

}  // namespace tests

#endif
