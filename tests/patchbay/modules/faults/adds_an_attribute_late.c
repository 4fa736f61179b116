/* Describes an attribute in its start, and adds it to its class long after. */

#include "brontal/brontal.h"

typedef struct t_box {
  t_object object;
  t_long value;
} t_box;

static t_class *s_class;
static t_attr *s_attribute;

static void *make(t_symbol *name, t_long argc, t_atom *argv) {
  (void)name;
  (void)argc;
  (void)argv;
  return object_alloc(s_class);
}

static void bang(void *x) {
  (void)x;
  class_addattr(s_class, s_attribute);
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("adds_an_attribute_late", make, NULL, (t_long)sizeof(t_box), NULL,
                      ARGS_VARIABLE, 0);
  s_attribute = attr_offset_new("value", gensym("long"), (t_long)offsetof(t_box, value));
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_register(common_symbols->box, s_class);
}
