/* Never releases what it asks for, one kind a message. */

#include "plain_class.h"

static void leak_a_block(void *x) {
  (void)x;
  sysmem_newptrclear(8);
}
static void leak_a_dictionary(void *x) {
  (void)x;
  dictionary_new();
}
static void leak_a_registered_dictionary(void *x) {
  t_symbol *name = gensym("left behind");
  (void)x;
  dictobj_register(NULL, &name);
}
static void leak_an_atom_array(void *x) {
  (void)x;
  atomarray_new(0, NULL);
}
static void leak_a_task(void *x) { qelem_set(qelem_new(x, leak_a_block)); }
static void leak_an_instance(void *x) {
  (void)x;
  object_new_typed(common_symbols->box, gensym("leaks"), 0, NULL);
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_class = class_new("leaks", make, NULL, (t_long)sizeof(t_object), NULL, ARGS_VARIABLE, 0);
  class_addmethod(s_class, (t_method)leak_a_block, "block", ARGS_NONE);
  class_addmethod(s_class, (t_method)leak_a_dictionary, "dictionary", ARGS_NONE);
  class_addmethod(s_class, (t_method)leak_a_registered_dictionary, "registered", ARGS_NONE);
  class_addmethod(s_class, (t_method)leak_an_atom_array, "array", ARGS_NONE);
  class_addmethod(s_class, (t_method)leak_a_task, "task", ARGS_NONE);
  class_addmethod(s_class, (t_method)leak_an_instance, "instance", ARGS_NONE);
  class_register(common_symbols->box, s_class);
}
