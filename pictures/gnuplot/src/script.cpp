#include "script.h"

#include <cmath>

#include <fmt/format.h>

#include "gnuplot/quoting.h"

namespace gnuplot {
namespace {

/** What makes gnuplot's kinds of output look the same: they differ in what they call a point, a
 *  unit of a dash, and a symbol of size 1. */
struct Terminal {
  const char *name;
  double font_size, title_size;
  double line_width, dash_length;
  double symbol_size;
  bool scales_symbols;
};

Terminal terminal_for(Format format, double scale) {
  switch (format) {
    case Format::svg: return {"svg", 12, 15, 1, 1, 0.7 * scale, false};
    case Format::png: return {"pngcairo", 9, 11, 1, 2, 1.0, true};
    case Format::pdf: break;
  }
  return {"pdfcairo", 6.75, 8.25, 1.5, 1.6, 0.75, true};
}

std::string size_for(const PageSize &page, Format format, double scale) {
  const double width = page.width * scale, height = page.height * scale;
  if (format != Format::pdf) return fmt::format("{},{}", std::lround(width), std::lround(height));
  // gnuplot takes inches and cuts off fractions of a point, of which an inch has 72.
  const auto inches = [](double pixels) { return (std::round(pixels * 0.75) + 0.01) / 72; };
  return fmt::format("{:.6f}in,{:.6f}in", inches(width), inches(height));
}

}  // namespace

Script::Script(const PageSize &page, Format format, double scale) : page_(page) {
  const Terminal terminal = terminal_for(format, scale);
  title_size_ = terminal.title_size;
  head_ = fmt::format(
      "set encoding utf8\n"
      "set terminal {0} size {1} noenhanced font 'sans-serif,{2}' fontscale {3} linewidth {4} "
      "dashlength {5} rounded background rgb 'white'\n"
      "S = {6}\n",
      terminal.name, size_for(page, format, scale), terminal.font_size, scale,
      terminal.line_width * scale, terminal.dash_length, terminal.symbol_size);
  if (terminal.scales_symbols) head_ += fmt::format("set termoption pointscale {}\n", scale);
  line("set multiplot; unset key; set clip two");
  line("set border 3 lw 0.8 lc rgb '#404040'");
  line("set tics nomirror out scale 0.6,0.3");
  line("set style line 1 lw 0.5 lc rgb '#d8d8d8' dt solid");
  line("set style line 2 lw 0.5 lc rgb '#eeeeee' dt solid");
}

std::string Script::at(const Place &place) const {
  return fmt::format("at screen {}, screen {}", across(place.left), upwards(place.top));
}

void Script::title(const std::string &text, const Place &left_middle) {
  line(fmt::format("set label {} {} left font ',{}'", quoted(text), at(left_middle), title_size_));
}

void Script::key_line(const Place &place, const std::string &style, const std::string &text) {
  constexpr double length = 44, gap = 8;
  line(fmt::format("set arrow from screen {0}, screen {2} to screen {1}, screen {2} nohead {3}",
                   across(place.left), across(place.left + length), upwards(place.top), style));
  key_text({place.left + length + gap, place.top}, text);
}

void Script::key_text(const Place &place, const std::string &text) {
  line(fmt::format("set label {} {} left", quoted(text), at(place)));
}

void Script::key_symbol(const Place &place, const std::string &style, const std::string &text) {
  line(fmt::format("set label '' {} point {}", at(place), style));
  key_text({place.left + 10, place.top}, text);
}

void Script::centred(const Place &place, const std::string &text) {
  line(fmt::format("set label {} {} center", quoted(text), at(place)));
}

void Script::upright(const Place &place, const std::string &text) {
  line(fmt::format("set label {} {} center rotate by 90", quoted(text), at(place)));
}

void Script::line(const std::string &command) { commands_ += command + '\n'; }

std::string Script::block(const pictures::Curve &curve) {
  std::string name = fmt::format("$d{}", block_count_++);
  blocks_ += name + " << EOD\n";
  for (std::size_t i = 0; i < curve.x.size(); ++i)
    blocks_ +=
        std::isnan(curve.y[i]) ? "\n" : fmt::format("{:.12g} {:.9g}\n", curve.x[i], curve.y[i]);
  blocks_ += "EOD\n";
  return name;
}

std::string Script::text() const { return head_ + blocks_ + commands_ + "unset multiplot\n"; }

}  // namespace gnuplot
