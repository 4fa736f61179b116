// A header for C++17: the coefficients, and a class that filters.

#include <optional>

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

/** Of each section: @COLUMNS@. */
inline constexpr @TYPE@ coefficients[section_count][@COLUMN_COUNT@] = {
@ROWS@};

/** Filters one signal: @STRUCTURE@, one section after the other. */
class Filter {
 public:
  /** Takes one sample and gives one. */
  @TYPE@ operator()(@TYPE@ x) {
    for (std::size_t i = 0; i < section_count; ++i) {
      const auto &c = coefficients[i];
@STATEMENTS@    }
    return x;
  }

  /** Forgets the signal. */
  void reset() { *this = Filter(); }

 private:
@STATE@};

}  // namespace @NAME@

#endif
)";

constexpr HeaderLanguage language{.blank = blank,
                                  .member = "  std::array<@TYPE@, section_count> @MEMBER@_{};\n",
                                  .use = "@MEMBER@_[i]",
                                  .statement = "      @STATEMENT@\n"};

template <Arithmetic arithmetic>
std::string write(const ExportedFilter &filter) {
  return c_header(filter, arithmetic, language,
                  fmt::format("Use: {}::Filter filter; then for each sample: y = filter(x);",
                              filter.identifier));
}

}  // namespace

constinit const Target cpp_target{.name = "cpp",
                                  .summary = "a C++17 header in doubles, with a class that filters",
                                  .arithmetic = Arithmetic::doubles,
                                  .form = Form::sections,
                                  .write = write<Arithmetic::doubles>,
                                  .structure = std::nullopt};

constinit const Target cpp_float_target{.name = "cpp-float",
                                        .summary = "the same in floats",
                                        .arithmetic = Arithmetic::floats,
                                        .form = Form::sections,
                                        .write = write<Arithmetic::floats>,
                                        .structure = std::nullopt};

}  // namespace layouts
