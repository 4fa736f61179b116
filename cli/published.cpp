#include "published.h"

#include <algorithm>

#include <fmt/format.h>

namespace cli {
namespace {

using patchbay::Value;
using patchbay::Values;

[[noreturn]] void fail(const std::string &what) {
  throw std::runtime_error("the design is not as the module publishes one: " + what);
}

double number(const std::string &key, const Value &value) {
  if (const auto *integer = std::get_if<t_long>(&value)) return static_cast<double>(*integer);
  if (const auto *real = std::get_if<double>(&value)) return *real;
  fail(fmt::format("'{}' holds '{}', which is no number", key, patchbay::to_text(value)));
}

std::vector<double> numbers(const std::string &key, const patchbay::Entry &entry) {
  const auto *values = std::get_if<Values>(&entry);
  if (values == nullptr) fail(fmt::format("'{}' is no list", key));
  std::vector<double> list;
  for (const Value &value : *values) list.push_back(number(key, value));
  return list;
}

// Lists of records are published flat.
std::vector<double> records(const std::string &key, const patchbay::Entry &entry,
                            std::size_t size) {
  std::vector<double> list = numbers(key, entry);
  if (list.size() % size != 0)
    fail(fmt::format("'{}' has {} numbers, which are not {} for each", key, list.size(), size));
  return list;
}

std::vector<std::complex<double>> roots(const std::string &key, const patchbay::Entry &entry) {
  const std::vector<double> flat = records(key, entry, 2);
  std::vector<std::complex<double>> list;
  for (std::size_t i = 0; i < flat.size(); i += 2) list.emplace_back(flat[i], flat[i + 1]);
  return list;
}

std::vector<std::array<double, 5>> sections(const std::string &key, const patchbay::Entry &entry) {
  const std::vector<double> flat = records(key, entry, 5);
  std::vector<std::array<double, 5>> list(flat.size() / 5);
  for (std::size_t i = 0; i < flat.size(); ++i) list[i / 5][i % 5] = flat[i];
  return list;
}

std::string text(const std::string &key, const patchbay::Entry &entry) {
  if (const auto *held = std::get_if<std::string>(&entry)) return *held;
  fail(fmt::format("'{}' is no text", key));
}

const Values &setting(const Design &design, const std::string &name) {
  const auto found = std::find_if(design.settings.begin(), design.settings.end(),
                                  [&](const auto &entry) { return entry.first == name; });
  if (found == design.settings.end() || found->second.empty())
    fail(fmt::format("there is no setting '{}'", name));
  return found->second;
}

// The module keeps cutoffs away from 0 and from the Nyquist frequency, and stays
// with those of a new box where the unit is radians.
std::vector<double> used_cutoffs(const Design &design, bool band) {
  const std::string units = patchbay::to_text(setting(design, "units").front());
  std::vector<double> cutoffs{0.125, 0.875};
  if (units != "radians") {
    cutoffs.clear();
    const double unit = units == "hertz" ? design.samplerate * 0.5 : 1.0;
    for (const Value &value : setting(design, "frequency"))
      cutoffs.push_back(std::clamp(number("frequency", value) / unit, 0.0001, 0.9999));
  }
  const std::size_t count = band ? 2 : 1;
  if (cutoffs.size() < count) fail("a band response needs two cutoffs");
  cutoffs.resize(count);
  return cutoffs;
}

}  // namespace

Published published(const Design &design) {
  Published out;
  for (const auto &[key, entry] : design.dictionary) {
    if (key == "topology") out.topology = text(key, entry);
    if (key == "response") out.response = text(key, entry);
    if (key == "zeroes") out.zeros = roots(key, entry);
    if (key == "poles") out.poles = roots(key, entry);
    if (key == "cascade") out.sections = sections(key, entry);
    if (key == "numerator") out.numerator = numbers(key, entry);
    if (key == "denominator") out.denominator = numbers(key, entry);
    if (key != "gain") continue;
    const auto *gain = std::get_if<double>(&entry);
    if (gain == nullptr) fail("'gain' is no number");
    out.gain = *gain;
  }
  if (out.topology.empty() || out.response.empty()) fail("topology or response is missing");
  out.samplerate = design.samplerate;
  out.cutoffs = used_cutoffs(design, out.response.starts_with("band"));
  return out;
}

}  // namespace cli
