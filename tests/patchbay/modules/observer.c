/* A client: it reports the beginning and end of each notice to its outlet, and may answer. */

#include <string.h>

#include "brontal/brontal.h"

typedef struct t_observer {
  t_object object;
  t_outlet *outlet;
  t_long answers; /* how many notices it still answers by setting "step" of the sender */
} t_observer;

static t_class *s_observer;

static void tell(const t_observer *x, const char *what, t_symbol *s, t_symbol *message,
                 void *data) {
  t_atom atoms[3];
  t_symbol *attribute = (t_symbol *)object_method_imp(data, common_symbols->getname);
  memset(atoms, 0, sizeof atoms);
  atom_setsym(&atoms[0], s);
  atom_setsym(&atoms[1], message);
  atom_setsym(&atoms[2], attribute != NULL ? attribute : gensym("nothing"));
  outlet_anything(x->outlet, gensym(what), 3, atoms);
}

static t_long observer_notify(t_observer *x, t_symbol *s, t_symbol *message, void *sender,
                              void *data) {
  const double step = (double)x->answers;
  tell(x, "begin", s, message, data);
  if (x->answers > 0) {
    --x->answers;
    object_attr_setdouble_array(sender, gensym("step"), 1, &step);
  }
  tell(x, "end", s, message, data);
  return 0;
}

static void *observer_new(t_symbol *name, t_long argc, t_atom *argv) {
  t_observer *x = (t_observer *)object_alloc(s_observer);
  (void)name;
  if (x == NULL) return NULL;
  x->outlet = outlet_new(x, NULL);
  attr_args_process(x, argc, argv);
  return x;
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_observer = class_new("observer", (t_constructor)observer_new, NULL, (t_long)sizeof(t_observer),
                         NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_observer, (t_method)observer_notify, "notify", ARGS_PRIVATE);
  class_addattr(s_observer,
                attr_offset_new("answers", gensym("long"), (t_long)offsetof(t_observer, answers)));
  class_register(common_symbols->box, s_observer);
}
