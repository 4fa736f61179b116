#include "integer_filter.h"

#include <utility>

#include "analysis/arrangement.h"
#include "fixed_point.h"
#include "integers_between.h"

namespace layouts {

bool has_integer_signals(const Target &target) {
  switch (target.arithmetic) {
    case Arithmetic::doubles:
    case Arithmetic::floats: return false;
    case Arithmetic::integers_between:
    case Arithmetic::fixed_32:
    case Arithmetic::fixed_16: break;
  }
  return true;
}

IntegerFilter integer_filter(const analysis::Sections &sections, const Target &target,
                             const Request &request, double samplerate) {
  const bool arranged = request.arrangement == Arrangement::quiet;
  const analysis::Sections ordered =
      arranged ? analysis::arranged(sections, analysis::Structure::direct_1) : sections;
  IntegerFilter filter = target.arithmetic == Arithmetic::integers_between
                             ? with_integers_between(ordered, target, request)
                             : in_fixed_point(ordered, target, request.noisy, samplerate);
  filter.sentences.insert(
      filter.sentences.begin(),
      request.source == Source::elsewhere ? "Sections: arranged for the least rounding noise."
      : arranged ? "Sections: arranged for the least rounding noise; the module publishes another "
                   "order (--as-published keeps it)."
                 : "Sections: in the order in which the module publishes them (--as-published).");
  return filter;
}

}  // namespace layouts
