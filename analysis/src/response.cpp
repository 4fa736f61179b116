#include "analysis/response.h"

#include "constants.h"
#include "factored_response.h"
#include "unit_circle.h"

namespace analysis {
namespace {

constexpr Wide db_per_w = 20 / ln10<Wide> * pi<Wide>;  // of d ln|H| / d angle

Wide root_slope(const CirclePoint &z, const Complex &root) {
  return logarithmic_slope(from_root(z, root), {-z.sin, z.cos});
}

Wide quadratic_slope(const CirclePoint &z, double c0, double c1, double c2) {
  const Wide first = c0;
  return logarithmic_slope(quadratic_at(z, c0, c1, c2),
                           {-(first + c2) * z.sin, (first - c2) * z.cos});
}

}  // namespace

Complex response(const Roots &filter, double w) { return factored_response(filter, w).value(); }
Complex response(const Sections &filter, double w) { return factored_response(filter, w).value(); }
Complex response(const Transfer &filter, double w) { return factored_response(filter, w).value(); }

double level_db(const Roots &filter, double w) { return factored_response(filter, w).db(); }
double level_db(const Sections &filter, double w) { return factored_response(filter, w).db(); }
double level_db(const Transfer &filter, double w) { return factored_response(filter, w).db(); }

double level_slope(const Roots &filter, double w) {
  const CirclePoint z = circle_point(w);
  Wide slope = 0;
  for (const Complex &zero : filter.zeros) slope += root_slope(z, zero);
  for (const Complex &pole : filter.poles) slope -= root_slope(z, pole);
  return static_cast<double>(db_per_w * slope);
}

double level_slope(const Sections &filter, double w) {
  const CirclePoint z = circle_point(w);
  Wide slope = 0;
  for (const Section &section : filter) {
    slope += quadratic_slope(z, section.b0, section.b1, section.b2);
    slope -= quadratic_slope(z, 1.0, section.a1, section.a2);
  }
  return static_cast<double>(db_per_w * slope);
}

}  // namespace analysis
