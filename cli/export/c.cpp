// Headers for C and C++: the coefficients, and a routine in direct form II transposed
// (Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.3).

#include <fmt/format.h>

#include "export/export.h"

namespace cli {
namespace {

struct Precision {
  const char *type;
  const char *suffix;
  std::string (*text)(double);
};

constexpr Precision doubles{"double", "", double_text};
constexpr Precision floats{"float", "f", float_text};

std::string rows(const Export &filter, const Precision &precision) {
  std::string text;
  for (const analysis::Section &s : filter.sections) {
    text += text.empty() ? "    {" : ",\n    {";
    const char *separator = "";
    for (const double value : {s.b0, s.b1, s.b2, s.a1, s.a2}) {
      text += separator + precision.text(value) + precision.suffix;
      separator = ", ";
    }
    text += '}';
  }
  return text;
}

// What stands between @ differs from header to header.
constexpr char c_header[] = R"(
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

constexpr char cpp_header[] = R"(
#ifndef @GUARD@_HPP
#define @GUARD@_HPP

#include <array>
#include <cstddef>

namespace @NAME@ {

inline constexpr std::size_t section_count = @COUNT@;
inline constexpr double samplerate = @RATE@;

/** Of each section: b0, b1, b2, a1, a2. */
inline constexpr @TYPE@ coefficients[section_count][5] = {
@ROWS@};

/** Filters one signal: direct form II transposed, one section after the other. */
class Filter {
 public:
  /** Takes one sample and gives one. */
  @TYPE@ operator()(@TYPE@ x) {
    for (std::size_t i = 0; i < section_count; ++i) {
      const auto &c = coefficients[i];
      const @TYPE@ y = c[0] * x + s1_[i];
      s1_[i] = c[1] * x - c[3] * y + s2_[i];
      s2_[i] = c[2] * x - c[4] * y;
      x = y;
    }
    return x;
  }

  /** Forgets the signal. */
  void reset() { *this = Filter(); }

 private:
  std::array<@TYPE@, section_count> s1_{};
  std::array<@TYPE@, section_count> s2_{};
};

}  // namespace @NAME@

#endif
)";

void replace_all(std::string &text, const std::string &word, const std::string &by) {
  for (std::size_t at = text.find(word); at != std::string::npos;
       at = text.find(word, at + by.size()))
    text.replace(at, word.size(), by);
}

std::string header(const Export &filter, const Precision &precision, std::string text,
                   const std::string &use) {
  replace_all(text, "@ROWS@", rows(filter, precision));
  replace_all(text, "@COUNT@", fmt::format("{}", filter.sections.size()));
  replace_all(text, "@RATE@", double_text(filter.samplerate));
  replace_all(text, "@TYPE@", precision.type);
  replace_all(text, "@GUARD@", upper_case(filter.identifier));
  replace_all(text, "@NAME@", filter.identifier);
  Words layout = subtracted_feedback();
  layout.push_back(use);
  return comment(filter, "// ", layout) + text;
}

std::string c(const Export &filter, const Precision &precision) {
  return header(filter, precision, c_header,
                fmt::format("Use: {0}_state state = {{{{0}}, {{0}}}}; then for each sample: "
                            "y = {0}_process(&state, x);",
                            filter.identifier));
}

std::string cpp(const Export &filter, const Precision &precision) {
  return header(filter, precision, cpp_header,
                fmt::format("Use: {}::Filter filter; then for each sample: y = filter(x);",
                            filter.identifier));
}

}  // namespace

std::string to_c(const Export &filter) { return c(filter, doubles); }
std::string to_c_float(const Export &filter) { return c(filter, floats); }
std::string to_cpp(const Export &filter) { return cpp(filter, doubles); }
std::string to_cpp_float(const Export &filter) { return cpp(filter, floats); }

}  // namespace cli
