#include "settings_line.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace designer {
namespace {

// More than these are counted, and refused, on the general path.
constexpr std::size_t most_settings = 64, most_items = 64;

// Takes what the library's parser meets. A function that returns false ends the parsing.
class Reader : public nlohmann::json_sax<nlohmann::json> {
 public:
  Settings take() { return std::move(settings_); }

  bool start_object(std::size_t) override { return std::exchange(place_, in_object) == outside; }

  bool key(std::string &name) override {
    std::replace(name.begin(), name.end(), '-', '_');
    if (settings_.has(name) || settings_.size() == most_settings) return false;
    name_ = std::move(name);
    return true;
  }

  bool start_array(std::size_t) override { return std::exchange(place_, in_list) == in_object; }

  bool end_array() override {
    place_ = in_object;
    return keep();
  }

  bool end_object() override {
    place_ = outside;
    return true;
  }

  bool boolean(bool value) override { return add(std::string(value ? "true" : "false")); }
  bool number_integer(std::int64_t value) override { return add(static_cast<t_long>(value)); }
  bool number_unsigned(std::uint64_t value) override {
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<t_long>::max());
    if (value > largest) return add(static_cast<double>(value));
    return add(static_cast<t_long>(value));
  }
  bool number_float(double value, const std::string &) override { return add(value); }
  bool string(std::string &value) override {
    if (value.empty() || value.find('\0') != std::string::npos) return false;
    return add(std::move(value));
  }

  bool null() override { return false; }
  bool binary(nlohmann::json::binary_t &) override { return false; }
  bool parse_error(std::size_t, const std::string &, const nlohmann::detail::exception &) override {
    return false;
  }

 private:
  enum Place { outside, in_object, in_list };

  bool add(Value value) {
    if (place_ == outside || values_.size() == most_items) return false;
    values_.push_back(std::move(value));
    return place_ == in_list || keep();
  }

  bool keep() {
    settings_.set(name_, std::exchange(values_, {}));
    return true;
  }

  Place place_ = outside;
  std::string name_;
  Values values_;
  Settings settings_;
};

}  // namespace

std::optional<Settings> read_settings_line(const std::string &json) {
  Reader reader;
  if (!nlohmann::json::sax_parse(json, &reader)) return std::nullopt;
  return reader.take();
}

}  // namespace designer
