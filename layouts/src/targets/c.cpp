// A header for C99: the coefficients, and a routine in direct form II transposed
// (Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.3).

#include <fmt/format.h>

#include "c_header.h"
#include "targets.h"

namespace layouts {
namespace {

// What is between @ differs from header to header.
constexpr char blank[] = R"(
#ifndef @GUARD@_H
#define @GUARD@_H

#define @GUARD@_SECTIONS @COUNT@
#define @GUARD@_SAMPLERATE @RATE@

/* Of each section: b0, b1, b2, a1, a2. */
static const @TYPE@ @NAME@_coefficients[@GUARD@_SECTIONS][5] = {
@ROWS@};

/* What the filter remembers of one signal; zeros before the first sample. */
typedef struct {
  @TYPE@ s1[@GUARD@_SECTIONS];
  @TYPE@ s2[@GUARD@_SECTIONS];
} @NAME@_state;

/* Filters one sample: direct form II transposed, one section after the other. */
static inline @TYPE@ @NAME@_process(@NAME@_state *state, @TYPE@ x)
{
  int i;
  for (i = 0; i < @GUARD@_SECTIONS; ++i) {
    const @TYPE@ *c = @NAME@_coefficients[i];
    const @TYPE@ y = c[0] * x + state->s1[i];
    state->s1[i] = c[1] * x - c[3] * y + state->s2[i];
    state->s2[i] = c[2] * x - c[4] * y;
    x = y;
  }
  return x;
}

#endif
)";

std::string header(const ExportedFilter &filter, Arithmetic arithmetic) {
  return c_header(filter, arithmetic, blank,
                  fmt::format("Use: {0}_state state = {{{{0}}, {{0}}}}; then for each sample: "
                              "y = {0}_process(&state, x);",
                              filter.identifier));
}

std::string write_doubles(const ExportedFilter &filter) {
  return header(filter, Arithmetic::doubles);
}

std::string write_floats(const ExportedFilter &filter) {
  return header(filter, Arithmetic::floats);
}

}  // namespace

constinit const Target c_target{"c", "a C99 header in doubles, with a routine that filters",
                                Arithmetic::doubles, Form::sections, write_doubles};

constinit const Target c_float_target{"c-float", "the same in floats", Arithmetic::floats,
                                      Form::sections, write_floats};

}  // namespace layouts
