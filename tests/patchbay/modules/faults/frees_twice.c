/* Releases each kind of thing twice. */

#include "brontal/brontal.h"

static t_class *s_class;

static void bang(void *x) {
  void *block = sysmem_newptr(8);
  t_dictionary *dictionary = dictionary_new();
  t_atomarray *array = atomarray_new(0, NULL);
  t_qelem *task = qelem_new(x, bang);
  sysmem_freeptr(block);
  sysmem_freeptr(block);
  object_free(dictionary);
  object_free(dictionary);
  object_free(array);
  object_free(array);
  qelem_free(task);
  qelem_free(task);
}

static void *make(t_symbol *name, t_long argc, t_atom *argv) {
  (void)name;
  (void)argc;
  (void)argv;
  return object_alloc(s_class);
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("frees_twice", make, NULL, (t_long)sizeof(t_object), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_register(common_symbols->box, s_class);
}
