// A design in the layout of another program: the text of a file, the same for every caller.
#ifndef LAYOUTS_LAYOUT_H
#define LAYOUTS_LAYOUT_H

#include <string>
#include <vector>

#include "designer/designer.h"
#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/** The text of the file, and remarks about it. */
struct File {
  std::string text;
  std::vector<std::string> remarks; /**< those of ExportedFilter; the design has its own */
};

/** @return the settings with those outputs switched on that a layout is made from: the sections,
 *          which the module makes from the roots that it publishes. */
designer::Settings with_sections(designer::Settings settings);

/**
 * Writes a design for a target: what `Target::write` makes of its `exported_filter`. A caller that
 * shows remarks even if the layout is refused afterwards takes these two steps itself.
 * @param design  of settings `with_sections`
 * Raises as both.
 */
File write(const designer::Design &design, const Target &target, const Request &request);

}  // namespace layouts

#endif
