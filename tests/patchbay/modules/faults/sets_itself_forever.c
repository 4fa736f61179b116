/* A task that asks for its next run each time it runs. */

#include "brontal/brontal.h"

typedef struct t_box {
  t_object object;
  t_qelem *task;
  t_long runs;
} t_box;

static t_class *s_class;

static void run(void *owner) {
  t_box *x = (t_box *)owner;
  ++x->runs;
  qelem_set(x->task);
}

static void *make(t_symbol *name, t_long argc, t_atom *argv) {
  t_box *x = (t_box *)object_alloc(s_class);
  (void)name;
  (void)argc;
  (void)argv;
  if (x == NULL) return NULL;
  x->task = qelem_new(x, run);
  qelem_set(x->task);
  return x;
}

static void destroy(void *x) { qelem_free(((t_box *)x)->task); }

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("sets_itself_forever", make, destroy, (t_long)sizeof(t_box), NULL,
                      ARGS_VARIABLE, 0);
  class_addattr(s_class, attr_offset_new("runs", gensym("long"), (t_long)offsetof(t_box, runs)));
  class_register(common_symbols->box, s_class);
}
