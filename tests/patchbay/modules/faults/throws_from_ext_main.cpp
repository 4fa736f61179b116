// Lets an exception out of its start, after it registered a class.

#include <stdexcept>

#include "brontal/brontal.h"

namespace {

t_class *its_class = nullptr;

void *make(t_symbol *, t_long, t_atom *) { return object_alloc(its_class); }

}  // namespace

extern "C" void ext_main() {
  common_symbols_init();
  its_class = class_new("survivor", make, nullptr, sizeof(t_object), nullptr, ARGS_VARIABLE, 0);
  class_register(common_symbols->box, its_class);
  throw std::runtime_error("let out");
}
