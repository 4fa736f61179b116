#include "styles.h"

#include <array>

#include <fmt/format.h>

#include "pictures/figure.h"

namespace gnuplot {
namespace {

struct Style {
  const char *colour, *dash;
  int half_power, pole, zero;  // symbols
};

constexpr std::array<Style, pictures::most_filters> styles{
    Style{"black", "solid", 7, 2, 6},
    Style{"#0060b0", "(10,5)", 5, 1, 4},
    Style{"#c04000", "(3,3)", 9, 3, 8},
    Style{"#007848", "(12,4,3,4)", 13, 13, 12},
    Style{"#8040a0", "(18,4,3,4,3,4)", 11, 11, 10},
    Style{"#906000", "(6,10)", 15, 15, 14}};

std::string symbol_style(const Style &style, int symbol, double size) {
  return fmt::format("pt {} ps {}*S lc rgb '{}'", symbol, size, style.colour);
}

}  // namespace

std::string line_style(std::size_t i) {
  return fmt::format("lw 1.6 lc rgb '{}' dt {}", styles.at(i).colour, styles.at(i).dash);
}

std::string half_power_style(std::size_t i) {
  return symbol_style(styles.at(i), styles.at(i).half_power, 0.8);
}

std::string pole_style(std::size_t i) { return symbol_style(styles.at(i), styles.at(i).pole, 0.9); }

std::string zero_style(std::size_t i) { return symbol_style(styles.at(i), styles.at(i).zero, 0.9); }

std::string sample_style(std::size_t i) {
  constexpr int dot = 7;
  return symbol_style(styles.at(i), dot, 0.4);
}

}  // namespace gnuplot
