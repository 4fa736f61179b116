/* Goes on building its class after its start. */

#include "plain_class.h"

typedef struct t_box {
  t_object object;
  t_long value;
} t_box;

static void bang(void *x) {
  (void)x;
  class_new("late", make, NULL, (t_long)sizeof(t_box), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "late", ARGS_NONE);
  class_dspinit(s_class);
  class_extra_lookup(s_class, gensym("methods"));
  class_register(gensym("late"), s_class);
}

static void attributes(void *x) {
  t_attr *attr = class_attr_get(s_class, gensym("value"));
  (void)x;
  attr_addfilter_clip(attr, 0, 1, 1, 1);
  class_attr_addattr_parse(s_class, "value", "label", gensym("symbol"), "Late");
  class_attr_addattr_format(s_class, "value", "style", gensym("symbol"), "s", gensym("late"));
  attr_offset_new("late", gensym("long"), (t_long)offsetof(t_box, value));
  attr_offset_array_new("later", gensym("long"), 1, (t_long)offsetof(t_box, value),
                        (t_long)offsetof(t_box, value));
}

static void symbols(void *x) {
  (void)x;
  common_symbols_init();
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("registers_late", make, NULL, (t_long)sizeof(t_box), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_addmethod(s_class, (t_method)attributes, "attributes", ARGS_NONE);
  class_addmethod(s_class, (t_method)symbols, "symbols", ARGS_NONE);
  class_addattr(s_class, attr_offset_new("value", gensym("long"), (t_long)offsetof(t_box, value)));
  class_register(common_symbols->box, s_class);
}
