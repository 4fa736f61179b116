// What is left of a signal that runs through the sections in double precision.

#include <string>

#include <fmt/format.h>

#include "checks.h"
#include "designer/limits.h"
#include "noise_levels.h"
#include "noise_text.h"
#include "tolerances.h"

namespace verdict {

Findings check_noise(const FilterUnderTest &filter) {
  const NoiseLevels noise = noise_levels(filter.forms, analysis::Arithmetic::doubles);
  const double exported_db = noise.exported.taken.noise_db;
  Findings findings;
  findings.measured["noise_db"] = noise.published_db;
  findings.measured["noise_exported_db"] = exported_db;
  const std::string published = noise_text(noise.published_db);
  const std::string exported = noise_text(exported_db);
  if (noise.published_db <= designer::most_noise_db)
    findings.fact("noise", "in doubles the sections " + published);
  else if (exported_db <= designer::most_noise_db)
    findings.problem("noise", "in doubles the sections as published " + published,
                     fmt::format("run them as 'veltane export' arranges them, where they {}; or "
                                 "several filters of a lower order in a row",
                                 exported));
  else
    findings.problem(
        "noise",
        fmt::format("in doubles the sections as published {}, and as 'veltane export' "
                    "arranges them they {}",
                    published, exported),
        Change::to_lower_order("a lower --order, or several filters of a lower order in a row"));
  return findings;
}

}  // namespace verdict
