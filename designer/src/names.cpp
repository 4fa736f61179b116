#include "designer/names.h"

#include <algorithm>

namespace designer {
namespace {

template <class Meaning>
struct Word {
  Meaning meaning;
  std::string_view text;
};

constexpr std::array families{Word<Family>{Family::butterworth, "butterworth"},
                              Word<Family>{Family::chebyshev_1, "chebyshev-1"},
                              Word<Family>{Family::chebyshev_2, "chebyshev-2"}};

constexpr std::array responses{
    Word<Response>{Response::lowpass, "lowpass"}, Word<Response>{Response::highpass, "highpass"},
    Word<Response>{Response::bandpass, "bandpass"}, Word<Response>{Response::bandstop, "bandstop"}};

constexpr std::array units{Word<Units>{Units::hertz, "hertz"},
                           Word<Units>{Units::normalized, "normalized"},
                           Word<Units>{Units::radians, "radians"}};

template <class Words, class Meaning>
std::string_view text_of(const Words &words, Meaning meaning) {
  return std::find_if(words.begin(), words.end(),
                      [&](const auto &word) { return word.meaning == meaning; })
      ->text;
}

template <class Words>
auto meaning_of(const Words &words, std::string_view text)
    -> std::optional<decltype(words.front().meaning)> {
  const auto found =
      std::find_if(words.begin(), words.end(), [&](const auto &word) { return word.text == text; });
  if (found == words.end()) return std::nullopt;
  return found->meaning;
}

}  // namespace

std::string_view name_of(Family family) { return text_of(families, family); }
std::string_view name_of(Response response) { return text_of(responses, response); }
std::optional<Family> family_named(std::string_view word) { return meaning_of(families, word); }
std::optional<Response> response_named(std::string_view word) {
  return meaning_of(responses, word);
}
std::optional<Units> units_named(std::string_view word) { return meaning_of(units, word); }

}  // namespace designer
