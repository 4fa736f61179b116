// Colours, dash patterns and symbols, as gnuplot's options.
#ifndef GNUPLOT_STYLES_H
#define GNUPLOT_STYLES_H

#include <cstddef>
#include <string>

namespace gnuplot {

/** The styles of the i-th filter, from 0 to pictures::most_filters - 1: they differ in dash pattern,
 *  symbol and colour. */
std::string line_style(std::size_t i);
std::string half_power_style(std::size_t i);
std::string pole_style(std::size_t i);
std::string zero_style(std::size_t i);
std::string sample_style(std::size_t i);

/** The style of a cutoff's line, and of a level that was asked for. Their greys differ because
 *  gnuplot's SVG treats two dash patterns of one colour as the same. */
inline constexpr char cutoff_style[] = "lw 1 lc rgb '#606060' dt (2,4)";
inline constexpr char limit_style[] = "lw 1 lc rgb '#585858' dt (14,4,2,4)";

inline constexpr char frame_style[] = "lw 0.8 lc rgb '#808080' dt (6,4)";

inline constexpr char unit_circle_style[] = "lw 0.8 lc rgb '#707070' dt solid";

}  // namespace gnuplot

#endif
