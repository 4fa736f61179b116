// What a filter does to sines.

#include "analysis/response.h"

#include <numbers>

#include <fmt/format.h>

#include "analysis/phase.h"
#include "designer/refusal.h"
#include "filter.h"

namespace python {

py::tuple response_of(const Filter &filter, const Doubles &frequencies) {
  constexpr double degrees = 180.0 / std::numbers::pi;
  const designer::PublishedFilter &published = filter.published();
  const analysis::Roots &roots = published.roots.value();
  const auto count = static_cast<std::size_t>(frequencies.size());
  std::vector<analysis::Complex> h(count);
  std::vector<double> level(count), phase(count), delay(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double f = frequencies.data()[i];
    if (!(f >= 0.0 && f <= published.nyquist()))
      throw designer::Refusal(fmt::format(
          "a frequency is from 0 to {} Hz, half the sample rate, not {}", published.nyquist(), f));
    const double w = f / published.nyquist();
    h[i] = analysis::response(published.sections, w);
    level[i] = analysis::level_db(published.sections, w);
    phase[i] = analysis::unwrapped_phase(roots, w) * degrees;
    delay[i] = analysis::group_delay(roots, w);
  }
  return py::make_tuple(array_of(h), array_of(level), array_of(phase), array_of(delay));
}

}  // namespace python
