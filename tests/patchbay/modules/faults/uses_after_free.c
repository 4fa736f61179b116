/* Goes on with what it has released, and with what went with something else. */

#include "plain_class.h"

static void bang(void *x) {
  t_dictionary *dictionary = dictionary_new();
  t_atomarray *array = atomarray_new(0, NULL);
  t_qelem *task = qelem_new(x, bang);
  t_symbol *name = gensym("gone");
  dictionary_appendatomarray(dictionary, gensym("array"), array);
  object_free(dictionary);
  qelem_free(task);
  dictionary_appendfloat(dictionary, gensym("number"), 1);
  dictobj_register(dictionary, &name);
  object_method_imp(array, gensym("setatoms64"), (t_long)0, NULL);
  qelem_set(task);
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class =
      class_new("uses_after_free", make, NULL, (t_long)sizeof(t_object), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)bang, "bang", ARGS_NONE);
  class_register(common_symbols->box, s_class);
}
