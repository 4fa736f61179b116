/* A client that answers every notice with one more change of the sender. */

#include "plain_class.h"

typedef struct t_client {
  t_object object;
  t_long step;
} t_client;

static t_long notify(void *x, t_symbol *s, t_symbol *message, void *sender, void *data) {
  const double step = 1.0;
  (void)x;
  (void)s;
  (void)message;
  (void)data;
  object_attr_setdouble_array(sender, gensym("step"), 1, &step);
  return 0;
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("answers_every_notice", make, NULL, (t_long)sizeof(t_client), NULL,
                      ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)notify, "notify", ARGS_PRIVATE);
  class_addattr(s_class, attr_offset_new("step", gensym("long"), (t_long)offsetof(t_client, step)));
  class_register(common_symbols->box, s_class);
}
