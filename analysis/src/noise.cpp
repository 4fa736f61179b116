#include "analysis/noise.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "analysis/fixed_point.h"
#include "analysis/stability.h"
#include "frequency_steps.h"
#include "noise_prediction.h"
#include "rounded_direct_form.h"
#include "rounded_state_variable.h"

namespace analysis {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr char fixed_point_refusal[] = "fixed point has direct form I only";

bool is_finite(const Section &s) {
  return std::isfinite(s.b0) && std::isfinite(s.b1) && std::isfinite(s.b2) && std::isfinite(s.a1) &&
         std::isfinite(s.a2);
}

Noise without_prediction(double level) { return {level, level, 0.0, false}; }

Noise predicted(const Sections &filter, const std::vector<RoundedSection> &sections,
                Arithmetic arithmetic, double amplitude) {
  // A coefficient beyond the range of the arithmetic.
  const auto overflows = [](const RoundedSection &section) {
    return !std::isfinite(section.numerator.at_one) || !std::isfinite(section.numerator.ends);
  };
  if (std::any_of(sections.begin(), sections.end(), overflows))
    return {infinity, infinity, 0.0, true};
  const auto is_stable = [](const RoundedSection &section) { return section.stable; };
  if (!stability(filter).stable || !std::all_of(sections.begin(), sections.end(), is_stable))
    return without_prediction(infinity);
  std::vector<Complex> poles;
  for (std::size_t k = 0; k < sections.size(); ++k) {
    const double sign = sections[k].turned ? -1 : 1;
    const Trinomial &rounded = sections[k].denominator;
    for (const Complex &pole : quadratic_roots(filter[k].a1, filter[k].a2)) poles.push_back(pole);
    for (const Complex &pole :
         quadratic_roots(sign * (rounded.at_one - rounded.ends), rounded.ends - 1))
      poles.push_back(pole);
  }
  const FrequencySteps steps = frequency_steps(poles);
  return predicted_noise(sections, steps, arithmetic, amplitude);
}

bool is_silent(const Section &s) { return s.b0 == 0 && s.b1 == 0 && s.b2 == 0; }

bool can_be_predicted(const Sections &filter, double amplitude) {
  return std::all_of(filter.begin(), filter.end(), is_finite) &&
         std::none_of(filter.begin(), filter.end(), is_silent) && std::isfinite(amplitude) &&
         amplitude > 0;
}

bool is_fixed_point(Arithmetic arithmetic) {
  return arithmetic == Arithmetic::fixed_32 || arithmetic == Arithmetic::fixed_16;
}

std::vector<RoundedSection> rounded(const Sections &filter, Structure structure,
                                    Arithmetic arithmetic) {
  std::vector<RoundedSection> sections;
  if (is_fixed_point(arithmetic)) {
    if (structure != Structure::direct_1) throw std::invalid_argument(fixed_point_refusal);
    const Sections integers = sections_of(fixed_cascade(filter, arithmetic));
    for (std::size_t k = 0; k < filter.size(); ++k)
      sections.push_back(rounded_fixed(filter[k], integers[k]));
    return sections;
  }
  const auto model =
      structure == Structure::direct_1 ? rounded_direct_1 : rounded_direct_2_transposed;
  for (const Section &section : filter) sections.push_back(model(section, arithmetic));
  return sections;
}

}  // namespace

Noise noise(const Sections &filter, Structure structure, Arithmetic arithmetic, double amplitude) {
  if (structure == Structure::state_variable && is_fixed_point(arithmetic))
    throw std::invalid_argument(fixed_point_refusal);
  if (!can_be_predicted(filter, amplitude))
    return without_prediction(std::numeric_limits<double>::quiet_NaN());
  if (structure != Structure::state_variable)
    return predicted(filter, rounded(filter, structure, arithmetic), arithmetic, amplitude);
  const auto forms = state_variables(filter);
  if (!forms) return without_prediction(infinity);
  std::vector<RoundedSection> sections;
  for (std::size_t k = 0; k < filter.size(); ++k)
    sections.push_back(rounded_state_variable(filter[k], (*forms)[k], arithmetic));
  return predicted(filter, sections, arithmetic, amplitude);
}

Noise noise(const std::vector<StateVariable> &forms, Arithmetic arithmetic, double amplitude) {
  if (is_fixed_point(arithmetic)) throw std::invalid_argument(fixed_point_refusal);
  Sections filter;
  for (const StateVariable &form : forms) filter.push_back(section_of(form));
  if (!can_be_predicted(filter, amplitude))
    return without_prediction(std::numeric_limits<double>::quiet_NaN());
  std::vector<RoundedSection> sections;
  sections.reserve(forms.size());
  for (const StateVariable &form : forms)
    sections.push_back(rounded_state_variable(form, arithmetic));
  return predicted(filter, sections, arithmetic, amplitude);
}

}  // namespace analysis
