#include "layouts/request.h"

#include <stdexcept>

#include <fmt/format.h>

#include "designer/refusal.h"

namespace layouts {
namespace {

// In ASCII whatever the locale: not every language accepts other letters.
bool is_letter_or_digit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// In the order of their words.
constexpr std::array structures{analysis::Structure::direct_2_transposed,
                                analysis::Structure::direct_1, analysis::Structure::state_variable};
static_assert(structures.size() == structure_words.size());

}  // namespace

std::string_view word_for(analysis::Structure structure) {
  for (std::size_t i = 0; i < structures.size(); ++i)
    if (structures[i] == structure) return structure_words[i];
  throw std::invalid_argument("no such structure");
}

std::optional<analysis::Structure> structure_named(std::string_view word) {
  for (std::size_t i = 0; i < structures.size(); ++i)
    if (structure_words[i] == word) return structures[i];
  return std::nullopt;
}

std::string identifier_for(std::string_view stem) {
  std::string name = "veltane_";
  for (const char c : stem)
    if (is_letter_or_digit(c))
      name += c;
    else if (name.back() != '_')
      name += '_';
  while (name.back() == '_') name.pop_back();
  return name == "veltane" ? "veltane_filter" : name;
}

void check(const Request &request, const Target &target) {
  if (request.source == Source::elsewhere &&
      (request.arrangement != Arrangement::quiet || request.level != Level::as_designed))
    throw designer::Refusal(
        "--normalise, --as-published and --spread-gain are for designs; sections of another "
        "program keep their level, and are arranged");
  if (request.arrangement != Arrangement::quiet && target.form != Form::sections)
    throw designer::Refusal(fmt::format(
        "--as-published and --spread-gain need sections, which --for {} does not have; --for "
        "{}-sections has them",
        target.name, target.name));
  if (!request.structure || !target.structure) return;
  std::string others;
  for (const Target &other : targets())
    if (!other.structure) others += fmt::format("{}{}", others.empty() ? "" : ", ", other.name);
  throw designer::Refusal(
      fmt::format("--for {} leaves no choice of --structure: the program that reads it has its "
                  "own; these leave "
                  "one: {}",
                  target.name, others));
}

}  // namespace layouts
