// A header for C99: the coefficients, and a routine.

#include <optional>

#include <fmt/format.h>

#include "c_header.h"
#include "section_routine.h"
#include "targets.h"

namespace layouts {
namespace {

// What is between @ differs from header to header.
constexpr char blank[] = R"(
#ifndef @GUARD@_H
#define @GUARD@_H

#define @GUARD@_SECTIONS @COUNT@
#define @GUARD@_SAMPLERATE @RATE@

/* Of each section: @COLUMNS@. */
static const @TYPE@ @NAME@_coefficients[@GUARD@_SECTIONS][@COLUMN_COUNT@] = {
@ROWS@};

/* What the filter remembers of one signal; zeros before the first sample. */
typedef struct {
@STATE@} @NAME@_state;

/* Filters one sample: @STRUCTURE@, one section after the other. */
static inline @TYPE@ @NAME@_process(@NAME@_state *state, @TYPE@ x)
{
  int i;
  for (i = 0; i < @GUARD@_SECTIONS; ++i) {
    const @TYPE@ *c = @NAME@_coefficients[i];
@STATEMENTS@  }
  return x;
}

#endif
)";

constexpr HeaderLanguage language{.blank = blank,
                                  .member = "  @TYPE@ @MEMBER@[@GUARD@_SECTIONS];\n",
                                  .use = "state->@MEMBER@[i]",
                                  .statement = "    @STATEMENT@\n"};

template <Arithmetic arithmetic>
std::string write(const ExportedFilter &filter) {
  const std::vector<std::string> zeros(section_routine(filter.structure).state.size(), "{0}");
  return c_header(filter, arithmetic, language,
                  fmt::format("Use: {0}_state state = {{{1}}}; then for each sample: "
                              "y = {0}_process(&state, x);",
                              filter.identifier, fmt::join(zeros, ", ")));
}

}  // namespace

constinit const Target c_target{.name = "c",
                                .summary = "a C99 header in doubles, with a routine that filters",
                                .arithmetic = Arithmetic::doubles,
                                .form = Form::sections,
                                .write = write<Arithmetic::doubles>,
                                .structure = std::nullopt};

constinit const Target c_float_target{.name = "c-float",
                                      .summary = "the same in floats",
                                      .arithmetic = Arithmetic::floats,
                                      .form = Form::sections,
                                      .write = write<Arithmetic::floats>,
                                      .structure = std::nullopt};

}  // namespace layouts
