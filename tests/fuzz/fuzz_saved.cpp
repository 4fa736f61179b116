// A saved design: checked as it is, exported anew, and drawn up to what gnuplot gets.

#include <sstream>

#include "command.h"
#include "fuzz.h"
#include "plot/figure.h"
#include "plot/ranges.h"
#include "saved.h"
#include "title.h"

namespace {

void draw(const std::string &file) {
  try {
    std::ostringstream printed;
    patchbay::Host host(printed);
    host.load(fuzz::module());
    const cli::Design saved = cli::read_saved(file);
    if (saved.dictionary.empty()) return;
    const cli::Design design = cli::saved_filter(host, file, saved);
    cli::plot::Figure figure;
    figure.traces.push_back(cli::plot::trace(design, "the file"));
    figure.traces.back().name = cli::title(design);
    figure.frequencies = cli::plot::whole_axis(figure.traces);
    figure.levels = cli::plot::whole_levels(figure.traces, cli::plot::usual_floor(figure.traces));
    cli::plot::script(figure);
  } catch (const std::runtime_error &) {
    // Refused in a sentence.
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const fuzz::File file(fuzz::text_of(data, size));
  fuzz::run_command({"check", file.name()});
  fuzz::run_command({"export", "--for", "scipy", "--from", file.name()});
  draw(file.name());
  return 0;
}
