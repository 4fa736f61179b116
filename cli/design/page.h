// A design as a page to read.
#ifndef CLI_DESIGN_PAGE_H
#define CLI_DESIGN_PAGE_H

#include <string>

#include "designer/designer.h"

namespace cli {

/** @return keys in published order, complex values as such, one section a line. Numbers read back to
 *  the same doubles. */
std::string design_page(const designer::Design &design);

}  // namespace cli

#endif
