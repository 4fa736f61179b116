#include "args/option_words.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include "args/nearest.h"
#include "designer/refusal.h"
#include "designer/settings.h"
#include "text/letters.h"

namespace cli {
namespace {

using Synonym = std::pair<std::string_view, std::string_view>;

// Without hyphens, as they are looked for.
constexpr std::array synonyms{Synonym{"butter", "butterworth"},
                              Synonym{"cheby1", "chebyshev-1"},
                              Synonym{"chebyshev1", "chebyshev-1"},
                              Synonym{"chebyshevi", "chebyshev-1"},
                              Synonym{"cheby2", "chebyshev-2"},
                              Synonym{"chebyshev2", "chebyshev-2"},
                              Synonym{"chebyshevii", "chebyshev-2"},
                              Synonym{"lp", "lowpass"},
                              Synonym{"low", "lowpass"},
                              Synonym{"hp", "highpass"},
                              Synonym{"high", "highpass"},
                              Synonym{"bp", "bandpass"},
                              Synonym{"band", "bandpass"},
                              Synonym{"bs", "bandstop"},
                              Synonym{"br", "bandstop"},
                              Synonym{"stop", "bandstop"},
                              Synonym{"notch", "bandstop"},
                              Synonym{"bandreject", "bandstop"},
                              Synonym{"hz", "hertz"},
                              Synonym{"normalised", "normalized"},
                              Synonym{"norm", "normalized"},
                              Synonym{"yes", "on"},
                              Synonym{"no", "off"},
                              Synonym{"true", "on"},
                              Synonym{"false", "off"},
                              Synonym{"1", "on"},
                              Synonym{"0", "off"}};

std::string without(char unwanted, std::string text) {
  std::erase(text, unwanted);
  return text;
}

std::string own_word(const Option &option, const std::string &typed) {
  const std::string plain = without('-', text::lower_case(typed));
  const auto is_choice = [&](std::string_view word) {
    return std::find(option.choices.begin(), option.choices.end(), word) != option.choices.end();
  };
  for (const std::string_view choice : option.choices)
    if (without('-', std::string(choice)) == plain) return std::string(choice);
  for (const auto &[word, meaning] : synonyms)
    if (word == plain && is_choice(meaning)) return std::string(meaning);
  // Numbers that look alike are not meant for one another.
  if (designer::number_in(typed)) return typed;
  if (const auto near = nearest(text::lower_case(typed), option.choices))
    throw designer::Refusal(
        fmt::format("{} cannot be '{}'; did you mean {}?", option.name(), typed, *near));
  return typed;
}

bool takes_numbers(const Option &option) { return option.value.starts_with("NUMBER"); }

// The exponent of ten that a letter before a unit stands for, or 0.
int exponent_of(char letter) {
  if (letter == 'k' || letter == 'K') return 3;
  return letter == 'M' ? 6 : 0;
}

std::string_view letters_of(Unit unit) {
  switch (unit) {
    case Unit::hertz: return "hz";
    case Unit::decibels: return "db";
    case Unit::none: break;
  }
  return "";
}

std::string without_trailing_spaces(std::string text) {
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

std::string without_unit(const std::string &typed, Unit unit) {
  const std::string_view letters = letters_of(unit);
  if (!text::lower_case(typed).ends_with(letters)) return without_trailing_spaces(typed);
  return without_trailing_spaces(typed.substr(0, typed.size() - letters.size()));
}

bool is_digits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Whole numbers on both sides of the only comma, and a unit or thousands behind the last of them.
bool has_doubtful_comma(const std::string &typed, Unit unit) {
  std::string number = without_unit(typed, unit);
  if (!number.empty() && exponent_of(number.back()) != 0) {
    number.pop_back();
    number = without_trailing_spaces(number);
  }
  if (number == typed) return false;
  const std::size_t comma = number.find(',');
  if (comma == std::string::npos) return false;
  std::string_view before(number.data(), comma);
  if (before.starts_with('-') || before.starts_with('+')) before.remove_prefix(1);
  return is_digits(before) && is_digits(std::string_view(number).substr(comma + 1));
}

void check_commas(const Option &option, const Words &typed) {
  for (const std::string &word : typed) {
    if (!has_doubtful_comma(word, option.unit)) continue;
    std::string one = without(' ', word), two = one;
    one[one.find(',')] = '.';
    two[two.find(',')] = ' ';
    throw designer::Refusal(fmt::format("{} cannot be '{}': write {} for one number, or {} for two",
                                        option.name(), word, one, two));
  }
}

// "300,3400" as two, and so is "300, 3400" in words of its own.
Words split_at_commas(const Words &typed) {
  Words words;
  for (const std::string &word : typed) {
    std::size_t begin = 0;
    for (std::size_t comma = word.find(','); comma != std::string::npos;
         comma = word.find(',', begin)) {
      if (comma > begin) words.push_back(word.substr(begin, comma - begin));
      begin = comma + 1;
    }
    if (begin < word.size()) words.push_back(word.substr(begin));
  }
  return words.empty() ? typed : words;
}

}  // namespace

std::string in_own_number(const std::string &typed, Unit unit) {
  std::string number = without_unit(typed, unit);
  const int exponent = number.empty() ? 0 : exponent_of(number.back());
  if (exponent != 0) {
    number.pop_back();
    number = without_trailing_spaces(number);
    if (number.find_first_not_of("+-.0123456789") != std::string::npos) return typed;
    // Not multiplied, so that the digits keep their value.
    number += fmt::format("e{}", exponent);
  }
  if (number == typed) return typed;
  const auto value = designer::number_in(number);
  return value ? fmt::format("{}", *value) : typed;
}

Words in_own_words(const Option &option, const Words &typed) {
  const bool is_list = takes_numbers(option) && option.most > 1;
  if (is_list) check_commas(option, typed);
  Words words = is_list ? split_at_commas(typed) : typed;
  for (std::string &word : words) {
    if (!option.choices.empty())
      word = own_word(option, word);
    else if (takes_numbers(option))
      word = in_own_number(word, option.unit);
  }
  return words;
}

}  // namespace cli
