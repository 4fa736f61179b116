// A header for C++17: the coefficients, and a routine in direct form II transposed
// (Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.3).

#include <fmt/format.h>

#include "c_header.h"
#include "targets.h"

namespace layouts {
namespace {

// What is between @ differs from header to header.
constexpr char blank[] = R"(
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

std::string header(const ExportedFilter &filter, Arithmetic arithmetic) {
  return c_header(filter, arithmetic, blank,
                  fmt::format("Use: {}::Filter filter; then for each sample: y = filter(x);",
                              filter.identifier));
}

std::string write_doubles(const ExportedFilter &filter) {
  return header(filter, Arithmetic::doubles);
}

std::string write_floats(const ExportedFilter &filter) {
  return header(filter, Arithmetic::floats);
}

}  // namespace

constinit const Target cpp_target{"cpp", "a C++17 header in doubles, with a class that filters",
                                  Arithmetic::doubles, Form::sections, write_doubles};

constinit const Target cpp_float_target{"cpp-float", "the same in floats", Arithmetic::floats,
                                        Form::sections, write_floats};

}  // namespace layouts
