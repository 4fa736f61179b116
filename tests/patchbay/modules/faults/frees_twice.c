/* Releases each kind of thing twice. */

#include "plain_class.h"

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

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("frees_twice", make, NULL, (t_long)sizeof(t_object), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_register(common_symbols->box, s_class);
}
