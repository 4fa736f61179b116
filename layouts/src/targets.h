// The targets that src/targets defines, one a file: NAME_target.
#ifndef LAYOUTS_TARGETS_H
#define LAYOUTS_TARGETS_H

#include "layouts/target.h"

namespace layouts {

#define TARGET(name) extern const Target name##_target;
#include "targets.inc"
#undef TARGET

}  // namespace layouts

#endif
