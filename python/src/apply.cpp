// Signals through a filter.

#include <algorithm>
#include <cmath>
#include <span>

#include "designer/refusal.h"
#include "designer/runnable.h"
#include "filter.h"
#include "signals/cascade.h"
#include "signals/zero_phase.h"

namespace python {
namespace {

void check(std::span<const double> samples) {
  if (!std::all_of(samples.begin(), samples.end(), [](double x) { return std::isfinite(x); }))
    throw designer::Refusal("the signal has a sample that is not finite");
}

std::span<const double> samples_of(const Doubles &frames) {
  return {frames.data(), static_cast<std::size_t>(frames.size())};
}

// What is run, checked before it is.
struct Run {
  const analysis::Sections &sections;
  std::size_t channels;
  std::span<const double> input;
  py::array_t<double> result;
  std::span<double> output;
};

Run prepared(const Filter &filter, const Doubles &frames) {
  const std::span<const double> input = samples_of(frames);
  designer::require_runnable(filter.arranged(), "check()");
  check(input);
  py::array_t<double> result({frames.shape(0), frames.shape(1)});
  double *const data = result.mutable_data();
  return {filter.arranged(),
          static_cast<std::size_t>(frames.shape(1)),
          input,
          std::move(result),
          {data, input.size()}};
}

}  // namespace

py::array_t<double> applied(const Filter &filter, const Doubles &frames) {
  Run run = prepared(filter, frames);
  if (run.input.empty()) return run.result;
  {
    const py::gil_scoped_release others_may_run;
    std::copy(run.input.begin(), run.input.end(), run.output.begin());
    signals::Cascade(run.sections, run.channels).run(run.output);
  }
  return run.result;
}

py::array_t<double> applied_in_both_directions(const Filter &filter, const Doubles &frames) {
  Run run = prepared(filter, frames);
  if (run.channels == 0) return run.result;
  {
    const py::gil_scoped_release others_may_run;
    signals::ZeroPhase zero_phase(run.sections, run.channels);
    zero_phase.add(run.input);
    zero_phase.turn([](double) {});
    std::span<double> rest = run.output;
    while (!rest.empty()) rest = rest.subspan(zero_phase.read(rest) * run.channels);
  }
  return run.result;
}

}  // namespace python
