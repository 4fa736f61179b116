#include "values.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <optional>

#include <fmt/format.h>

#include "patchbay/host.h"
#include "runtime/symbols.h"
#include "trace.h"

namespace patchbay {
namespace {

// Standard libraries of other systems lack std::from_chars for doubles. What lies beyond the
// doubles, and what rounds to 0 without being 0, is not accepted as a number: it would become
// infinite or silent.
std::optional<double> as_double(const char *begin, const char *end) {
  double number = 0.0;
  const auto [stop, error] = fast_float::from_chars(begin, end, number);
  if (error != std::errc() || stop != end || !std::isfinite(number)) return std::nullopt;
  const char *exponent = std::find_if(begin, end, [](char c) { return c == 'e' || c == 'E'; });
  const bool is_zero = std::none_of(begin, exponent, [](char c) { return c >= '1' && c <= '9'; });
  if (number == 0.0 && !is_zero) return std::nullopt;
  return number;
}

}  // namespace

// Numbers begin with a digit, a sign or a point; "inf" and "nan" are words.
Value parse_word(const std::string &word) {
  const char *begin = word.c_str();
  const char *end = begin + word.size();
  const bool negative = *begin == '-';
  const char *digits = *begin == '+' ? begin + 1 : begin;
  const char *first = negative ? begin + 1 : digits;
  if (std::isdigit(static_cast<unsigned char>(*first)) == 0 && *first != '.') return word;
  t_long integer = 0;
  // No integer has the sign of "-0".
  if (auto [stop, error] = std::from_chars(digits, end, integer);
      error == std::errc() && stop == end && !(negative && integer == 0))
    return integer;
  if (const auto number = as_double(digits, end)) return *number;
  return word;
}

std::string to_text(const Value &value) {
  if (const auto *text = std::get_if<std::string>(&value)) return *text;
  return std::visit([](const auto &held) { return fmt::format("{}", held); }, value);
}

Values parse_line(const std::string &line) {
  Values values;
  std::size_t at = 0;
  const auto is_space = [&](std::size_t i) {
    return std::isspace(static_cast<unsigned char>(line[i])) != 0;
  };
  while (true) {
    while (at < line.size() && is_space(at)) ++at;
    if (at == line.size()) return values;
    std::size_t end = at;
    if (line[at] == '"') {
      end = line.find('"', at + 1);
      if (end == std::string::npos) throw Error("unclosed double quote in: " + line);
      values.emplace_back(line.substr(at + 1, end - at - 1));
      at = end + 1;
    } else {
      while (end < line.size() && !is_space(end)) ++end;
      values.push_back(parse_word(line.substr(at, end - at)));
      at = end;
    }
  }
}

t_atom to_atom(const Value &value) {
  t_atom atom{};
  if (const auto *integer = std::get_if<t_long>(&value)) {
    atom.type = ATOM_LONG;
    atom.value.integer = *integer;
  } else if (const auto *number = std::get_if<double>(&value)) {
    atom.type = ATOM_FLOAT;
    atom.value.number = *number;
  } else {
    atom.type = ATOM_SYMBOL;
    atom.value.symbol = runtime::intern(std::get<std::string>(value).c_str());
  }
  return atom;
}

Value from_atom(const t_atom &atom) {
  switch (atom.type) {
    case ATOM_LONG: return atom.value.integer;
    case ATOM_FLOAT: return atom.value.number;
    case ATOM_SYMBOL: return as_text(atom.value.symbol);
    case ATOM_NOTHING: break;
  }
  return std::string();
}

std::vector<t_atom> to_atoms(const Values &values) {
  std::vector<t_atom> atoms;
  atoms.reserve(values.size());
  for (const Value &value : values) atoms.push_back(to_atom(value));
  return atoms;
}

Values from_atoms(t_long argc, const t_atom *argv) {
  Values values;
  if (argv == nullptr || argc <= 0) return values;
  values.reserve(static_cast<std::size_t>(argc));
  for (t_long i = 0; i < argc; ++i) values.push_back(from_atom(argv[i]));
  return values;
}

}  // namespace patchbay
