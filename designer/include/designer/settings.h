// The settings of a box: attributes by name, with their values.
#ifndef DESIGNER_SETTINGS_H
#define DESIGNER_SETTINGS_H

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "patchbay/value.h"

namespace designer {

using patchbay::Value;
using patchbay::Values;

/** One attribute. */
struct Setting {
  std::string name; /**< as the module declares it, with underscores */
  Values values;
};

/** Settings in the order in which they were given, no name twice. Values may be texts, as they were
 *  typed, until a box has taken them. */
class Settings {
 public:
  Settings() = default;
  Settings(std::initializer_list<Setting> settings) : settings_(settings) {}
  explicit Settings(std::vector<Setting> settings) : settings_(std::move(settings)) {}

  /** @return the values of a setting; null if it is missing. */
  const Values *find(std::string_view name) const;
  bool has(std::string_view name) const { return find(name) != nullptr; }

  /** @return its first value as a text. Raises std::runtime_error if it is missing. */
  std::string text(std::string_view name) const;

  /** @return its first value as a number. Raises std::runtime_error if it is missing or a text. */
  double number(std::string_view name) const;

  /** @return all its values as numbers. Raises as `number`. */
  std::vector<double> numbers(std::string_view name) const;

  /** Gives a setting its values, at the end if it is new. */
  void set(const std::string &name, Values values);

  void erase(std::string_view name);

  bool empty() const { return settings_.empty(); }
  std::size_t size() const { return settings_.size(); }
  auto begin() const { return settings_.begin(); }
  auto end() const { return settings_.end(); }

 private:
  const Values &required(std::string_view name) const;

  std::vector<Setting> settings_;
};

/** @return the number that a value holds or that its text reads as; none for any other text. */
std::optional<double> number_in(const Value &value);

}  // namespace designer

#endif
