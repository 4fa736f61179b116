#include "coefficients.h"

#include <fmt/format.h>

namespace layouts {

std::string coefficient_list(const analysis::Section &section, Feedback feedback, NumberText text) {
  // A missing term stays 0.0, without a sign.
  const auto taken = [&](double a) { return feedback == Feedback::added && a != 0.0 ? -a : a; };
  return fmt::format("{}, {}, {}, {}, {}", text(section.b0), text(section.b1), text(section.b2),
                     text(taken(section.a1)), text(taken(section.a2)));
}

}  // namespace layouts
