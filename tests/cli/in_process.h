// Asks the command something in this process, as its `main` would.
#ifndef VELTANE_TESTS_IN_PROCESS_H
#define VELTANE_TESTS_IN_PROCESS_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "base/words.h"
#include "designer/refusal.h"
#include "dispatch.h"

namespace tests {

/** @return the words of a line as a shell splits it, single quotes included. */
inline cli::Words split(const std::string &line) {
  cli::Words words;
  std::string word;
  bool quoted = false, begun = false;
  for (const char c : line + ' ') {
    if (c == '\'') {
      quoted = !quoted;
      begun = true;
    } else if (c == ' ' && !quoted) {
      if (begun) words.push_back(word);
      word.clear();
      begun = false;
    } else {
      word += c;
      begun = true;
    }
  }
  return words;
}

/** What a request that was wrong is answered with. */
struct Refused {
  const char *arguments;
  const char *says; /**< a part of the sentence: what was wrong, or what is allowed */
};

// What a failing case, and the test itself, are called.
inline void PrintTo(const Refused &refused, std::ostream *out) {
  *out << '\'' << refused.arguments << '\'';
}

/** @param arguments  as typed behind the command's name
 *  @return the sentence that refuses them; none where they are not refused */
inline std::optional<std::string> refusal(const std::string &arguments) {
  try {
    cli::run(split(arguments));
  } catch (const designer::Refusal &found) {
    return found.what();
  }
  return std::nullopt;
}

/** Fails unless the arguments are refused in one sentence that says so. */
inline void expect_refusal(const Refused &refused) {
  const auto sentence = refusal(refused.arguments);
  ASSERT_TRUE(sentence.has_value()) << "it was not refused";
  EXPECT_THAT(*sentence, testing::HasSubstr(refused.says));
  EXPECT_THAT(*sentence, testing::Not(testing::HasSubstr("\n")));
  EXPECT_FALSE(sentence->ends_with('.')) << *sentence;
}

}  // namespace tests

#endif
