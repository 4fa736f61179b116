#include "designer/runnable.h"

#include <cmath>

#include <fmt/format.h>

#include "analysis/stability.h"
#include "designer/refusal.h"

namespace designer {

void require_runnable(const analysis::Sections &sections, std::string_view adviser) {
  for (const analysis::Section &s : sections)
    for (const double value : {s.b0, s.b1, s.b2, s.a1, s.a2})
      if (!std::isfinite(value))
        throw Refusal(
            "this filter has a coefficient that is not finite; a lower order or another cutoff may "
            "help");
  if (!analysis::stability(sections).stable)
    throw Refusal(
        fmt::format("this filter is not stable, and its output would never die away; {} says what "
                    "to change",
                    adviser));
}

}  // namespace designer
