#include "subject.h"

#include <algorithm>

#include <fmt/format.h>

namespace cli {

namespace {

const patchbay::Values &values(const Subject &subject, const std::string &name) {
  const auto &settings = subject.design.settings;
  const auto found = std::find_if(settings.begin(), settings.end(),
                                  [&](const auto &entry) { return entry.first == name; });
  if (found == settings.end() || found->second.empty())
    throw std::runtime_error(fmt::format("the box has no setting '{}'", name));
  return found->second;
}

}  // namespace

std::string Subject::setting(const std::string &name) const {
  return patchbay::to_text(values(*this, name).front());
}

std::vector<double> Subject::numbers(const std::string &name) const {
  std::vector<double> list;
  for (const patchbay::Value &value : values(*this, name))
    if (const auto *integer = std::get_if<t_long>(&value))
      list.push_back(static_cast<double>(*integer));
    else
      list.push_back(std::get<double>(value));
  return list;
}

std::string Subject::hz(double w) const {
  return fmt::format("{:.6g} Hz", w * whole.samplerate / 2);
}

bool Subject::publishes_transfer() const {
  return !published.denominator.empty() && !published.numerator.empty();
}

bool Subject::has_two_cutoffs() const { return analysis::has_two_edges(band); }

bool Subject::has_no_band() const {
  return has_two_cutoffs() && !(whole.cutoffs[0] < whole.cutoffs[1]);
}

analysis::Band band_of(const std::string &response) {
  using analysis::Band;
  if (response == "highpass") return Band::highpass;
  if (response == "bandpass") return Band::bandpass;
  return response == "bandstop" ? Band::bandstop : Band::lowpass;
}

analysis::Sections sections_of(const Published &published) {
  analysis::Sections sections;
  for (const auto &[b0, b1, b2, a1, a2] : published.sections)
    sections.push_back({b0, b1, b2, a1, a2});
  return sections;
}

analysis::Roots roots_of(const Published &published) {
  return {published.zeros, published.poles, published.gain.value_or(0.0)};
}

}  // namespace cli
