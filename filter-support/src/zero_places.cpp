#include "zero_places.h"

#include <cmath>

#include "filtermath/known_symbol.h"
#include "platform.h"

namespace filtermath {

ZeroPlaces zero_places(t_symbol *response, double wo) {
  if (response == required_symbol<"highpass">()) return {1.0, 1.0};
  if (response == required_symbol<"bandpass">()) return {1.0, -1.0};
  if (response == required_symbol<"bandstop">()) {
    const double theta = std::atan2(wo, 4.0);
    return {unit_circle(2.0 * theta), unit_circle(-2.0 * theta)};
  }
  return {-1.0, -1.0};
}

}  // namespace filtermath
