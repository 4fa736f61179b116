#include "noise_levels.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/arrangement.h"
#include "analysis/noise.h"

namespace verdict {
namespace {

using analysis::Arithmetic;
using analysis::Structure;

constexpr Structure structure = Structure::direct_2_transposed;

double worst_db(const analysis::Sections &sections, Arithmetic arithmetic) {
  const analysis::Noise noise = analysis::noise(sections, structure, arithmetic);
  const double worst = std::max(noise.white_db, noise.sine_db);
  const bool unknown = std::isnan(noise.white_db) || std::isnan(noise.sine_db);
  return noise.overflows || unknown ? std::numeric_limits<double>::infinity() : worst;
}

}  // namespace

NoiseLevels noise_levels(const analysis::Sections &sections, Arithmetic arithmetic) {
  return {worst_db(sections, arithmetic),
          worst_db(analysis::arranged(sections, structure), arithmetic)};
}

}  // namespace verdict
