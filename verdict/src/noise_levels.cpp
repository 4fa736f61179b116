#include "noise_levels.h"

#include "analysis/noise.h"

namespace verdict {

NoiseLevels noise_levels(const Forms &forms, analysis::Arithmetic arithmetic) {
  return {analysis::noise(forms.sections, analysis::Structure::direct_2_transposed, arithmetic)
              .worst_db(),
          analysis::chosen_realization(forms.sections, forms.roots, arithmetic)};
}

}  // namespace verdict
