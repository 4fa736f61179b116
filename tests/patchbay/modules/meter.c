/* "meter" takes signals; "deaf" knows "dsp64" too, but takes none. */

#include "brontal/brontal.h"

typedef struct t_meter {
  t_signal_object object;
  t_outlet *outlet;
  double samplerate; /* as "dsp64" told it */
  t_long vector;
  t_long times;
} t_meter;

static t_class *s_meter;
static t_class *s_deaf;

static void meter_dsp64(t_meter *x, void *dsp, short *count, double samplerate,
                        t_long maxvectorsize, t_long flags) {
  (void)dsp;
  (void)count;
  (void)flags;
  x->samplerate = samplerate;
  x->vector = maxvectorsize;
  ++x->times;
  outlet_anything(x->outlet, gensym("dsp64"), 0, NULL);
}

static void *make(t_class *c) {
  t_meter *x = (t_meter *)object_alloc(c);
  if (x != NULL) x->outlet = outlet_new(x, NULL);
  return x;
}

static void *meter_new(t_symbol *name, t_long argc, t_atom *argv) {
  (void)name;
  (void)argc;
  (void)argv;
  return make(s_meter);
}

static void *deaf_new(t_symbol *name, t_long argc, t_atom *argv) {
  (void)name;
  (void)argc;
  (void)argv;
  return make(s_deaf);
}

static t_class *describe(const char *name, t_constructor constructor) {
  t_class *c = class_new(name, constructor, NULL, (t_long)sizeof(t_meter), NULL, ARGS_VARIABLE, 0);
  class_addmethod(c, (t_method)meter_dsp64, "dsp64", ARGS_PRIVATE);
  class_addattr(
      c, attr_offset_new("samplerate", gensym("float64"), (t_long)offsetof(t_meter, samplerate)));
  class_addattr(c, attr_offset_new("vector", gensym("long"), (t_long)offsetof(t_meter, vector)));
  class_addattr(c, attr_offset_new("times", gensym("long"), (t_long)offsetof(t_meter, times)));
  return c;
}

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  s_meter = describe("meter", meter_new);
  class_dspinit(s_meter);
  class_register(common_symbols->box, s_meter);
  s_deaf = describe("deaf", deaf_new);
  class_register(common_symbols->box, s_deaf);
}
