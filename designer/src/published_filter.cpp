#include "designer/published_filter.h"

#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "designer/cutoffs.h"

namespace designer {
namespace {

[[noreturn]] void fail(const std::string &what) {
  throw std::runtime_error("the design is not one that the module publishes: " + what);
}

double number(const std::string &key, const Value &value) {
  if (std::holds_alternative<std::string>(value))
    fail(fmt::format("'{}' holds '{}', not a number", key, std::get<std::string>(value)));
  return *number_in(value);
}

std::vector<double> numbers(const std::string &key, const patchbay::Entry &entry) {
  const auto *values = std::get_if<Values>(&entry);
  if (values == nullptr) fail(fmt::format("'{}' is not a list", key));
  std::vector<double> list;
  for (const Value &value : *values) list.push_back(number(key, value));
  return list;
}

// Lists of records are published flat.
std::vector<double> records(const std::string &key, const patchbay::Entry &entry,
                            std::size_t size) {
  std::vector<double> list = numbers(key, entry);
  if (list.size() % size != 0)
    fail(fmt::format("'{}' has {} numbers, not {} for each", key, list.size(), size));
  return list;
}

template <class Meaning>
Meaning word(const std::string &key, const patchbay::Entry &entry,
             std::optional<Meaning> (*meaning)(std::string_view)) {
  const auto *text = std::get_if<std::string>(&entry);
  if (text == nullptr) fail(fmt::format("'{}' is not text", key));
  if (const auto known = meaning(*text)) return *known;
  fail(fmt::format("'{}' is '{}'", key, *text));
}

// What the dictionary holds.
struct Forms {
  std::optional<Family> family;
  std::optional<Response> response;
  std::vector<analysis::Complex> zeros, poles;
  std::optional<double> gain;
  analysis::Sections sections;
  analysis::Transfer transfer;
};

Forms forms_in(const patchbay::Dictionary &dictionary) {
  Forms found;
  for (const auto &[key, entry] : dictionary) {
    if (key == "topology") found.family = word(key, entry, family_named);
    if (key == "response") found.response = word(key, entry, response_named);
    if (key == "zeroes") found.zeros = analysis::roots_from_list(records(key, entry, 2));
    if (key == "poles") found.poles = analysis::roots_from_list(records(key, entry, 2));
    if (key == "cascade") found.sections = analysis::sections_from_list(records(key, entry, 5));
    if (key == "numerator") found.transfer.numerator = numbers(key, entry);
    if (key == "denominator") found.transfer.denominator = numbers(key, entry);
    if (key != "gain") continue;
    const auto *gain = std::get_if<double>(&entry);
    if (gain == nullptr) fail("'gain' is not a number");
    found.gain = *gain;
  }
  if (!found.family || !found.response) fail("topology or response is missing");
  return found;
}

}  // namespace

bool PublishedFilter::has_no_band() const {
  return has_two_cutoffs() && !(cutoffs[0] < cutoffs[1]);
}

std::vector<double> PublishedFilter::ascending_cutoffs() const {
  std::vector<double> sorted = cutoffs;
  std::sort(sorted.begin(), sorted.end());
  return sorted;
}

PublishedFilter published_filter(const Design &design) {
  Forms forms = forms_in(design.dictionary);
  const Settings &settings = design.settings;
  PublishedFilter filter{};
  filter.family = *forms.family;
  filter.response = *forms.response;
  filter.order = static_cast<std::size_t>(settings.number("order"));
  filter.passband_ripple = settings.number("passband_ripple");
  filter.stopband_attenuation = settings.number("stopband_attenuation");
  const auto units = units_named(settings.text("units"));
  if (!units) fail(fmt::format("the units are '{}'", settings.text("units")));
  filter.units = *units;
  filter.frequency = settings.numbers("frequency");
  filter.samplerate = design.samplerate;
  filter.samplerate_assumed = settings.number("samplerate") < 1;
  for (const Cutoff &cutoff : cutoffs_in(settings, design.samplerate))
    filter.cutoffs.push_back(cutoff.used);
  if (forms.gain)
    filter.roots = analysis::Roots{std::move(forms.zeros), std::move(forms.poles), *forms.gain};
  filter.sections = std::move(forms.sections);
  filter.transfer = std::move(forms.transfer);
  return filter;
}

}  // namespace designer
