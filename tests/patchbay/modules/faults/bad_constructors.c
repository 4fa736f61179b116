/* Constructors that yield no instance, and one whose instance soon frees itself. */

#include <string.h>

#include "brontal/brontal.h"

static t_class *s_class;
static t_class *s_signals;
static t_object s_own; /* not from object_alloc */

static void *make(t_symbol *name, t_long argc, t_atom *argv) {
  void *x = NULL;
  (void)argc;
  (void)argv;
  if (strcmp(name->name, "returns_null") == 0) return NULL;
  if (strcmp(name->name, "returns_its_own_memory") == 0) return &s_own;
  x = object_alloc(s_class);
  if (strcmp(name->name, "leaves_a_half_made_instance") == 0) return NULL;
  object_free(x);
  return x; /* returns_what_it_freed */
}

static void *make_signals(t_symbol *name, t_long argc, t_atom *argv) {
  (void)name;
  (void)argc;
  (void)argv;
  return object_alloc(s_signals);
}

static void free_itself(void *x, void *dsp, short *count, double samplerate, t_long maxvectorsize,
                        t_long flags) {
  (void)dsp;
  (void)count;
  (void)samplerate;
  (void)maxvectorsize;
  (void)flags;
  object_free(x);
}

BRONTAL_EXPORT void ext_main(void) {
  static const char *const names[] = {"returns_null", "returns_its_own_memory",
                                      "leaves_a_half_made_instance", "returns_what_it_freed"};
  common_symbols_init();
  for (size_t i = 0; i < sizeof names / sizeof names[0]; ++i) {
    s_class = class_new(names[i], make, NULL, (t_long)sizeof(t_object), NULL, ARGS_VARIABLE, 0);
    class_register(common_symbols->box, s_class);
  }
  s_signals = class_new("frees_itself_from_dsp64", make_signals, NULL,
                        (t_long)sizeof(t_signal_object), NULL, ARGS_VARIABLE, 0);
  class_dspinit(s_signals);
  class_addmethod(s_signals, (t_method)free_itself, "dsp64", ARGS_PRIVATE);
  class_register(common_symbols->box, s_signals);
}
