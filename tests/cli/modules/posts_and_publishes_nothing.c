/* A class "veltane" whose boxes publish nothing when they are banged, and post the
 * attribute "units" instead, unless it is "nothing". */

#include <stddef.h>
#include <string.h>

#include "brontal/brontal.h"

typedef struct t_box {
  t_object object;
  t_symbol *name;
  t_symbol *response;
  t_symbol *units;
} t_box;

static t_class *s_class;

static void *make(t_symbol *name, t_long argc, t_atom *argv) {
  t_box *x = object_alloc(s_class);
  (void)name;
  if (x == NULL) return NULL;
  x->name = gensym("nobody");
  x->response = gensym("lowpass");
  x->units = gensym("nothing");
  attr_args_process(x, argc, argv);
  return x;
}

static void bang(t_box *x) {
  if (strcmp(x->units->name, "nothing") != 0) object_error(x, "%s", x->units->name);
}

BRONTAL_EXPORT void ext_main(void) {
  t_symbol *symbol = gensym("symbol");
  s_class = class_new("veltane", make, NULL, sizeof(t_box), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_addattr(s_class, attr_offset_new("name", symbol, offsetof(t_box, name)));
  class_addattr(s_class, attr_offset_new("response", symbol, offsetof(t_box, response)));
  class_addattr(s_class, attr_offset_new("units", symbol, offsetof(t_box, units)));
  class_register(gensym("box"), s_class);
}
