// A host with the real module in it, for every test of the box.
#ifndef VELTANE_TESTS_BOX_TEST_H
#define VELTANE_TESTS_BOX_TEST_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "patchbay/host.h"
#include "patchbay/inspector.h"

using patchbay::Box;
using patchbay::Values;

class BoxTest : public testing::Test {
 protected:
  BoxTest() : host(printed) { host.load(VELTANE_MODULE); }

  // Whatever a test does, the box keeps the host's rules and leaks nothing.
  void TearDown() override { EXPECT_THAT(host.close(), testing::IsEmpty()); }

  Box make(const std::string &settings = "") {
    const Box box = host.make("veltane " + settings);
    host.listen(box, 0, [this](const std::string &message, const Values &arguments) {
      std::string text = message;
      for (const patchbay::Value &argument : arguments) text += ' ' + patchbay::to_text(argument);
      sent.push_back(text);
    });
    return box;
  }

  // Makes a box, bangs it, and returns what it published.
  patchbay::Dictionary designed(const std::string &settings) {
    const Box box = make(settings);
    host.send(box, "bang");
    return published(box);
  }

  patchbay::Dictionary published(Box box) {
    return host.dictionary(text(box, "name")).value_or(patchbay::Dictionary{});
  }

  double number(Box box, const std::string &attribute) {
    const patchbay::Value value = host.get(box, attribute).at(0);
    const auto *integer = std::get_if<t_long>(&value);
    return integer != nullptr ? static_cast<double>(*integer) : std::get<double>(value);
  }

  std::string text(Box box, const std::string &attribute) {
    return patchbay::to_text(host.get(box, attribute).at(0));
  }

  std::vector<std::string> posted() {
    std::vector<std::string> texts;
    for (const patchbay::Post &post : host.posts()) texts.push_back(post.text);
    return texts;
  }

  std::ostringstream printed;
  patchbay::Host host;
  patchbay::Inspector inspector{host};
  std::vector<std::string> sent;  // what left the outlets
};

inline std::vector<std::string> keys(const patchbay::Dictionary &dictionary) {
  std::vector<std::string> texts;
  for (const auto &[key, entry] : dictionary) texts.push_back(key);
  return texts;
}

// An entry of a dictionary; a test that asks for a missing one fails.
template <typename T>
T entry(const patchbay::Dictionary &dictionary, const std::string &key) {
  for (const auto &[name, value] : dictionary)
    if (name == key) return std::get<T>(value);
  ADD_FAILURE() << "there is no key " << key;
  return T{};
}

inline std::vector<double> numbers(const patchbay::Dictionary &dictionary, const std::string &key) {
  std::vector<double> list;
  for (const patchbay::Value &value : entry<Values>(dictionary, key))
    list.push_back(std::get<double>(value));
  return list;
}

// Calls as text, without the interning of symbols, which carries no order.
inline std::vector<std::string> texts(const std::vector<patchbay::Call> &calls) {
  std::vector<std::string> list;
  for (const patchbay::Call &call : calls)
    if (call.operation != "gensym") list.push_back(call.text());
  return list;
}

#endif
