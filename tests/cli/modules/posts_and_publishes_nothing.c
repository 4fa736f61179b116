/* A class "veltane" whose boxes publish nothing when they are banged, and post the
 * attribute "posts" instead, unless it is "nothing". */

#include <stddef.h>
#include <string.h>

#include "brontal/brontal.h"

typedef struct t_box {
  t_object object;
  t_symbol *name;
  t_symbol *response;
  t_symbol *posts;
} t_box;

static t_class *s_class;

static void *make(t_symbol *name, t_long argc, t_atom *argv) {
  t_box *x = object_alloc(s_class);
  (void)name;
  if (x == NULL) return NULL;
  x->name = gensym("nobody");
  x->response = gensym("lowpass");
  x->posts = gensym("nothing");
  attr_args_process(x, argc, argv);
  return x;
}

static void bang(t_box *x) {
  if (strcmp(x->posts->name, "nothing") != 0) object_error(x, "%s", x->posts->name);
}

BRONTAL_EXPORT void ext_main(void) {
  t_symbol *symbol = gensym("symbol");
  s_class = class_new("veltane", make, NULL, sizeof(t_box), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_addattr(s_class, attr_offset_new("name", symbol, offsetof(t_box, name)));
  class_addattr(s_class, attr_offset_new("response", symbol, offsetof(t_box, response)));
  class_addattr(s_class, attr_offset_new("posts", symbol, offsetof(t_box, posts)));
  class_register(gensym("box"), s_class);
}
