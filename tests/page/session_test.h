// A session with the linked-in module.
#ifndef TESTS_PAGE_SESSION_TEST_H
#define TESTS_PAGE_SESSION_TEST_H

#include <gmock/gmock.h>

#include "brontal/class.h"
#include "session/session.h"

namespace tests {

using text::Json;

class SessionTest : public testing::Test {
 protected:
  page::Answer ask(const std::string &name, Json request = Json::object()) {
    request["do"] = name;
    return session.answer(request.dump());
  }

  /** @return the numbers that a document refers to. */
  static std::vector<double> numbers(const page::Answer &answer, const Json &place) {
    const auto begin = answer.numbers.begin() + place.at("numbers").at(0).get<std::ptrdiff_t>();
    return {begin, begin + place.at("numbers").at(1).get<std::ptrdiff_t>()};
  }

  page::Session session{ext_main};
};

}  // namespace tests

#endif
