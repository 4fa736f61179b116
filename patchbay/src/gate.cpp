#include <fmt/format.h>

#include "state.h"

namespace patchbay {

std::string as_text(t_long number) { return fmt::format("{}", number); }

std::string as_text(double number) { return fmt::format("{}", number); }

Trace &trace_of(State &state) { return state.trace; }

Faults &faults_of(State &state) { return state.faults; }

void report(State &state, std::string violation) {
  state.violations.push_back(std::move(violation));
}

std::string Call::text() const {
  return fmt::format("{}({})", operation, fmt::join(arguments, ", "));
}

}  // namespace patchbay
