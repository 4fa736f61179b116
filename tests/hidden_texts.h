// Texts that may not be shown as they are.
#ifndef VELTANE_TESTS_HIDDEN_TEXTS_H
#define VELTANE_TESTS_HIDDEN_TEXTS_H

#include <string>
#include <vector>

namespace tests {

inline const std::vector<std::string> &hidden_characters() {
  static const std::vector<std::string> list{"\x01",   "\x1b[2J", "\n",     "\t",     "\x7f",
                                             "\u0080", "\u0085",  "\u009b", "\u061c", "\u200e",
                                             "\u200f", "\u2028",  "\u2029", "\u202a", "\u202e",
                                             "\u2066", "\u2069",  "\ufffe", "\uffff", "]]>"};
  return list;
}

// What no place may get, each in the middle of a word.
inline std::vector<std::string> hidden_texts() {
  std::vector<std::string> list = hidden_characters();
  list.insert(list.end(), {"\xff", "\xc3", "\xe2\x80", "\xc0\xaf", "\x80", "\xed\xa0\x80"});
  return list;
}

}  // namespace tests

#endif
