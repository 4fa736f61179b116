#include "section_routine.h"

#include <stdexcept>

#include "comment.h"

namespace layouts {
namespace {

using analysis::Structure;

const std::vector<std::string> direct_coefficients{"b0", "b1", "b2", "a1", "a2"};

// Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.3.1.
SectionRoutine direct_1() {
  return {direct_coefficients,
          {"x1", "x2", "y1", "y2"},
          {"const @TYPE@ y = c[0] * x + c[1] * @x1@ + c[2] * @x2@",
           "                 - c[3] * @y1@ - c[4] * @y2@;", "@x2@ = @x1@;", "@x1@ = x;",
           "@y2@ = @y1@;", "@y1@ = y;", "x = y;"},
          equation(Feedback::subtracted)};
}

// The same, section 6.4.
SectionRoutine direct_2_transposed() {
  return {direct_coefficients,
          {"s1", "s2"},
          {"const @TYPE@ y = c[0] * x + @s1@;", "@s1@ = c[1] * x - c[3] * y + @s2@;",
           "@s2@ = c[2] * x - c[4] * y;", "x = y;"},
          equation(Feedback::subtracted)};
}

// The loop of analysis/run.h.
SectionRoutine state_variable() {
  return {{"g", "r", "h", "high", "band", "low", "turn"},
          {"s1", "s2"},
          {"const @TYPE@ hp = c[2] * (x - c[1] * @s1@ - @s2@);", "const @TYPE@ t = c[0] * hp;",
           "const @TYPE@ bp = t + @s1@;", "const @TYPE@ u = c[0] * bp;",
           "const @TYPE@ lp = u + @s2@;", "@s1@ = c[6] * (bp + t);", "@s2@ = c[6] * (lp + u);",
           "x = c[3] * hp + c[4] * bp + c[5] * lp;"},
          {"H(z) = product over the sections of",
           "       (high s^2 + band g s + low g^2) / (s^2 + (r - g) g s + g^2),",
           "       s = (1 - z^-1) / (1 + z^-1), and with -z for z where turn is -1",
           "hp = h (x[n] - r s1 - s2), bp = g hp + s1, lp = g bp + s2,",
           "y[n] = high hp + band bp + low lp;",
           "then s1 becomes turn (bp + g hp), and s2 becomes turn (lp + g bp).",
           "g, r and h hold how far the poles are from z = turn, however near they are to it;",
           "a1 and a2 of a direct form lose that at low cutoffs."}};
}

}  // namespace

SectionRoutine section_routine(Structure structure) {
  switch (structure) {
    case Structure::direct_1: return direct_1();
    case Structure::direct_2_transposed: return direct_2_transposed();
    case Structure::state_variable: return state_variable();
  }
  throw std::invalid_argument("no such structure");
}

std::vector<std::vector<double>> coefficient_rows(const ExportedFilter &filter) {
  std::vector<std::vector<double>> rows;
  if (filter.structure == Structure::state_variable)
    for (const analysis::StateVariable &f : filter.forms)
      rows.push_back({f.g, f.r, f.h, f.high, f.band, f.low, f.mirrored ? -1.0 : 1.0});
  else
    for (const analysis::Section &s : filter.sections)
      rows.push_back({s.b0, s.b1, s.b2, s.a1, s.a2});
  return rows;
}

}  // namespace layouts
