// A saved design: checked as it is, exported anew, and drawn up to what gnuplot gets.

#include "command.h"
#include "designer/refusal.h"
#include "designer/saved_design.h"
#include "designer/title.h"
#include "fuzz.h"
#include "gnuplot/picture.h"
#include "pictures/figure.h"

namespace {

void draw(const std::string &json) {
  designer::Designer designer(fuzz::module());
  try {
    const designer::SavedDesign saved = designer::parse_saved_design(json, "the file");
    if (saved.dictionary.empty()) return;
    const designer::Design design = designer::opened(designer, saved, "the file");
    pictures::DrawnFilter filter =
        pictures::drawn_filter(designer::published_filter(design), "the file");
    filter.name = designer::title(design);
    gnuplot::script(pictures::figure_of({filter}), {});
  } catch (const designer::Refusal &) {
  } catch (const std::runtime_error &) {
    // A dictionary that is not that of a filter.
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string json = fuzz::text_of(data, size);
  const fuzz::File file(json);
  fuzz::run_command({"check", file.name()});
  fuzz::run_command({"export", "--for", "scipy", "--from", file.name()});
  draw(json);
  return 0;
}
