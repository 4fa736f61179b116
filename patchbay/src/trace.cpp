#include "trace.h"

#include <fmt/format.h>

namespace patchbay {

std::string as_text(t_long number) { return fmt::format("{}", number); }

std::string as_text(double number) { return fmt::format("{}", number); }

}  // namespace patchbay
