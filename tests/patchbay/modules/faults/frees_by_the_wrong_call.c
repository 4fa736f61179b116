/* Hands each kind of thing to a release that is not for it, then to the right one. */

#include "plain_class.h"

static void bang(void *x) {
  void *block = sysmem_newptr(8);
  t_dictionary *dictionary = dictionary_new();
  t_qelem *task = qelem_new(x, bang);
  object_free(block);
  sysmem_freeptr(dictionary);
  object_free(task);
  qelem_free((t_qelem *)dictionary);
  sysmem_freeptr(x);
  object_free(s_class);
  sysmem_freeptr(block);
  object_free(dictionary);
  qelem_free(task);
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("frees_by_the_wrong_call", make, NULL, (t_long)sizeof(t_object), NULL,
                      ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_register(common_symbols->box, s_class);
}
