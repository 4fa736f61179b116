#include "noise_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

namespace verdict {

std::string noise_text(double db) {
  if (db == -std::numeric_limits<double>::infinity()) return "make no noise";
  if (std::isinf(db)) return "overflow";
  if (db > -0.5)
    return fmt::format("make noise {:.0f} dB above the output's peak", std::max(db, 0.0));
  return fmt::format("make noise {:.0f} dB below the output's peak", -db);
}

}  // namespace verdict
