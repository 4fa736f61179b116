// A design in the layout of another program: the text of a file, the same from every door.
#ifndef LAYOUTS_LAYOUT_H
#define LAYOUTS_LAYOUT_H

#include <string>
#include <vector>

#include "designer/designer.h"
#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/** What is written, and what has to be said about it. */
struct File {
  std::string text;
  std::vector<std::string> remarks; /**< those of ExportedFilter; the design has its own */
};

/** @return the settings with the outputs switched on that a layout is made of: the sections, which
 *  the module makes from roots that it publishes. */
designer::Settings with_sections(designer::Settings settings);

/**
 * Writes a design for a target: what `Target::write` makes of its `exported_filter`. A door that
 * shows remarks even where the layout is refused afterwards takes these two steps itself.
 * @param design  of settings `with_sections`
 * Raises as both.
 */
File write(const designer::Design &design, const Target &target, const Request &request);

}  // namespace layouts

#endif
