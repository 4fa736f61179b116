#include "noise_levels.h"

#include "analysis/arrangement.h"
#include "analysis/noise.h"

namespace verdict {
namespace {

using analysis::Arithmetic;
using analysis::Structure;

constexpr Structure structure = Structure::direct_2_transposed;

}  // namespace

NoiseLevels noise_levels(const analysis::Sections &sections, Arithmetic arithmetic) {
  return {
      analysis::noise(sections, structure, arithmetic).worst_db(),
      analysis::noise(analysis::arranged(sections, structure), structure, arithmetic).worst_db()};
}

}  // namespace verdict
