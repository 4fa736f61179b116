// The designer of the test program, which has but one.
#ifndef TESTS_DESIGNER_WITH_MODULE_H
#define TESTS_DESIGNER_WITH_MODULE_H

#include "designer/designer.h"

namespace tests {

/** @return a designer with the built module. */
inline designer::Designer &designer_with_module() {
  static designer::Designer designer{VELTANE_MODULE};
  return designer;
}

}  // namespace tests

#endif
