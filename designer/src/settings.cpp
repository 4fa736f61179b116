#include "designer/settings.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

namespace designer {
namespace {

template <class List>
auto place_of(List &settings, std::string_view name) {
  return std::find_if(settings.begin(), settings.end(),
                      [&](const Setting &setting) { return setting.name == name; });
}

double held(std::string_view name, const Value &value) {
  if (const auto *integer = std::get_if<t_long>(&value)) return static_cast<double>(*integer);
  if (const auto *number = std::get_if<double>(&value)) return *number;
  throw std::runtime_error(
      fmt::format("the setting '{}' is '{}', not a number", name, patchbay::to_text(value)));
}

}  // namespace

const Values *Settings::find(std::string_view name) const {
  const auto found = place_of(settings_, name);
  return found == settings_.end() ? nullptr : &found->values;
}

const Values &Settings::required(std::string_view name) const {
  const Values *values = find(name);
  if (values == nullptr || values->empty())
    throw std::runtime_error(fmt::format("the box has no setting '{}'", name));
  return *values;
}

std::string Settings::text(std::string_view name) const {
  return patchbay::to_text(required(name).front());
}

double Settings::number(std::string_view name) const { return held(name, required(name).front()); }

std::vector<double> Settings::numbers(std::string_view name) const {
  std::vector<double> list;
  for (const Value &value : required(name)) list.push_back(held(name, value));
  return list;
}

void Settings::set(const std::string &name, Values values) {
  const auto found = place_of(settings_, name);
  if (found != settings_.end())
    found->values = std::move(values);
  else
    settings_.push_back({name, std::move(values)});
}

void Settings::erase(std::string_view name) {
  std::erase_if(settings_, [&](const Setting &setting) { return setting.name == name; });
}

std::optional<double> number_in(const Value &value) {
  if (const auto *integer = std::get_if<t_long>(&value)) return static_cast<double>(*integer);
  if (const auto *number = std::get_if<double>(&value)) return *number;
  const auto &text = std::get<std::string>(value);
  // Quotes make a symbol, and one that is not closed an error.
  if (text.find('"') != std::string::npos) return std::nullopt;
  const Values read = patchbay::parse_line(text);
  if (read.size() != 1 || std::holds_alternative<std::string>(read[0])) return std::nullopt;
  return number_in(read[0]);
}

}  // namespace designer
