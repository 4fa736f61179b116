#include "patchbay/inspector.h"

#include <algorithm>

#include <fmt/format.h>

#include "operations.h"
#include "state.h"
#include "violations.h"

namespace patchbay {

std::string Call::text() const {
  return fmt::format("{}({})", operation, fmt::join(arguments, ", "));
}

State &Inspector::state() const { return host_.own(); }

const std::vector<std::string> &Inspector::violations() const {
  return patchbay::violations(state());
}

std::vector<std::string> Inspector::leaks() const { return state().ledger.leaks(); }

void Inspector::start_trace() {
  Trace &trace = state().trace;
  trace.calls.clear();
  trace.on = true;
}

std::vector<Call> Inspector::stop_trace() {
  Trace &trace = state().trace;
  trace.on = false;
  return std::move(trace.calls);
}

std::vector<std::string> Inspector::operations() {
  return {operation_names.begin(), operation_names.end()};
}

void Inspector::fail(const std::string &operation, std::size_t nth) {
  const auto found = std::find(operation_names.begin(), operation_names.end(), operation);
  if (found == operation_names.end())
    throw Error(fmt::format("there is no operation '{}'", operation));
  Faults &faults = state().faults;
  faults.armed = true;
  faults.countdown[static_cast<std::size_t>(found - operation_names.begin())] = nth;
}

std::size_t Inspector::forget_failures() {
  Faults &faults = state().faults;
  auto &countdown = faults.countdown;
  const auto left = std::count_if(countdown.begin(), countdown.end(),
                                  [](std::size_t count) { return count != 0; });
  countdown.fill(0);
  faults.armed = false;
  return static_cast<std::size_t>(left);
}

}  // namespace patchbay
