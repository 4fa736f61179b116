/* A box that counts: it uses most of the host interface, and uses it well: atoms
 * are empty before they are set, as setting one may fail. */

#include <string.h>

#include "brontal/brontal.h"

typedef struct t_counter {
  t_object object;
  t_outlet *totals;  /* left: what was counted, and the answer to some messages */
  t_outlet *done;    /* middle: sends "done" and nothing else */
  t_outlet *notices; /* right: each notice that arrived */
  t_qelem *later;
  t_dictionary *results;

  t_symbol *name; /* under which the results are registered */
  t_symbol *unit;
  t_symbol *notes[2];
  t_long note_count;
  t_long step;
  double gain;
  double limits[3];
  t_long limit_count;
  t_long even;
  t_long total;
  t_long made;    /* how many counters there had been */
  t_long started; /* how often ext_main had run */
} t_counter;

static t_class *s_counter;
static t_long s_made;
static t_long s_started;

static void answer(t_counter *x, const char *message, t_long value) {
  t_atom atom;
  memset(&atom, 0, sizeof atom);
  atom.type = ATOM_LONG;
  atom.value.integer = value;
  outlet_anything(x->totals, gensym(message), 1, &atom);
}

/* --- messages */

static void counter_bang(t_counter *x) {
  x->total += x->step;
  answer(x, "total", x->total);
}

static void counter_add(t_counter *x, t_symbol *message, t_long argc, t_atom *argv) {
  outlet_anything(x->totals, message, argc, argv);
  for (t_long i = 0; i < argc; ++i)
    if (argv[i].type == ATOM_LONG) x->total += argv[i].value.integer;
}

static void counter_later(t_counter *x) { qelem_set(x->later); }
static void counter_never(t_counter *x) { qelem_unset(x->later); }
static void counter_run(t_counter *x) { outlet_anything(x->done, gensym("done"), 0, NULL); }

static void counter_publish(t_counter *x) {
  t_atom atoms[2];
  t_atomarray *array = NULL;
  memset(atoms, 0, sizeof atoms);
  atom_setfloat(&atoms[0], 0.5);
  atom_setsym(&atoms[1], gensym("half"));
  array = atomarray_new(2, atoms);
  dictionary_appendfloat(x->results, gensym("gain"), x->gain);
  dictionary_appendsym(x->results, gensym("unit"), x->unit);
  dictionary_appendatomarray(x->results, gensym("pair"), array);
}

static void counter_show(t_counter *x) {
  t_atom name;
  void *viewer = NULL;
  memset(&name, 0, sizeof name);
  atom_setsym(&name, x->name);
  viewer = object_new_typed(common_symbols->box, gensym("dict"), 1, &name);
  object_method_imp(viewer, common_symbols->edit);
  object_free(viewer);
}

static void counter_complain(t_counter *x, t_symbol *message, t_long argc, t_atom *argv) {
  object_error(x, "%s: %s, %d of %g", message->name, argc > 0 ? atom_getsym(argv)->name : "",
               (int)argc, x->gain);
}

static void counter_dblclick(t_counter *x) { answer(x, "clicked", x->total); }

static void counter_assist(t_counter *x, void *box, t_long io, t_long index, char *text) {
  (void)x;
  (void)box;
  strcpy(text, io == ASSIST_INLET ? "inlet 0" : "outlet 0");
  text[strlen(text) - 1] = (char)('0' + index);
}

static t_long counter_notify(t_counter *x, t_symbol *s, t_symbol *message, void *sender,
                             void *data) {
  t_atom atoms[3];
  t_symbol *about = (t_symbol *)object_method_imp(data, common_symbols->getname);
  memset(atoms, 0, sizeof atoms);
  atom_setsym(&atoms[0], s);
  atom_setsym(&atoms[1], about != NULL ? about : gensym("nothing"));
  atom_setsym(&atoms[2], gensym(sender == x ? "itself" : "another"));
  outlet_anything(x->notices, message, 3, atoms);
  return 0;
}

/* --- attributes with setters of their own */

/* Refuses what is negative, and rounds down to an even number. */
static t_result set_even(t_counter *x, t_attr *attr, t_long argc, t_atom *argv) {
  (void)attr;
  if (argc != 1 || argv[0].type != ATOM_LONG || argv[0].value.integer < 0) return RESULT_FAILED;
  x->even = argv[0].value.integer / 2 * 2;
  answer(x, "even", x->even);
  return RESULT_OK;
}

static t_result set_name(t_counter *x, t_attr *attr, t_long argc, t_atom *argv) {
  t_symbol *name = atom_getsym(argv);
  (void)attr;
  (void)argc;
  x->results = dictobj_register(x->results, &name);
  x->name = name;
  return x->results != NULL ? RESULT_OK : RESULT_FAILED;
}

/* --- life */

static void *counter_new(t_symbol *name, t_long argc, t_atom *argv) {
  t_counter *x = (t_counter *)object_alloc(s_counter);
  (void)name;
  if (x == NULL) return NULL;
  x->notices = outlet_new(x, NULL);
  x->done = outlet_new(x, "done");
  x->totals = outlet_new(x, NULL);
  x->later = qelem_new(x, (t_task)(t_method)counter_run);
  x->results = dictionary_new();
  x->unit = gensym("");
  x->step = 1;
  x->made = s_made++;
  x->started = s_started;
  object_attach_byptr_register(x, x, common_symbols->box);
  attr_args_process(x, argc, argv);
  return x;
}

static void counter_free(t_counter *x) {
  qelem_free(x->later);
  object_free(x->results);
}

static void add(t_class *c, const char *name, const char *type, size_t offset) {
  class_addattr(c, attr_offset_new(name, gensym(type), (t_long)offset));
}

static void add_array(t_class *c, const char *name, const char *type, t_long maximum, size_t count,
                      size_t offset) {
  class_addattr(c,
                attr_offset_array_new(name, gensym(type), maximum, (t_long)count, (t_long)offset));
}

static void set_with(t_class *c, const char *name, t_method setter) {
  object_method_imp(class_attr_get(c, gensym(name)), gensym("setmethod"), gensym("set"), setter);
}

BRONTAL_EXPORT void ext_main(void) {
  t_class *c = NULL;
  common_symbols_init();
  ++s_started;
  c = class_new("counter", (t_constructor)counter_new, (t_destructor)(t_method)counter_free,
                (t_long)sizeof(t_counter), NULL, ARGS_VARIABLE, 0);
  s_counter = c;

  class_addmethod(c, (t_method)counter_bang, "bang", ARGS_NONE);
  class_addmethod(c, (t_method)counter_add, "add", ARGS_VARIABLE);
  class_addmethod(c, (t_method)counter_later, "later", ARGS_NONE);
  class_addmethod(c, (t_method)counter_never, "never", ARGS_NONE);
  class_addmethod(c, (t_method)counter_publish, "publish", ARGS_NONE);
  class_addmethod(c, (t_method)counter_show, "show", ARGS_NONE);
  class_addmethod(c, (t_method)counter_complain, "complain", ARGS_VARIABLE);
  class_addmethod(c, (t_method)counter_dblclick, "dblclick", ARGS_PRIVATE);
  class_addmethod(c, (t_method)counter_assist, "assist", ARGS_PRIVATE);
  class_addmethod(c, (t_method)counter_notify, "notify", ARGS_PRIVATE);

  add(c, "name", "symbol", offsetof(t_counter, name));
  add(c, "unit", "symbol", offsetof(t_counter, unit));
  add_array(c, "notes", "symbol", 2, offsetof(t_counter, note_count), offsetof(t_counter, notes));
  add(c, "step", "long", offsetof(t_counter, step));
  add(c, "gain", "float64", offsetof(t_counter, gain));
  add_array(c, "limits", "float64", 3, offsetof(t_counter, limit_count),
            offsetof(t_counter, limits));
  add(c, "even", "long", offsetof(t_counter, even));
  add(c, "total", "long", offsetof(t_counter, total));
  add(c, "made", "long", offsetof(t_counter, made));
  add(c, "started", "long", offsetof(t_counter, started));

  attr_addfilter_clip(class_attr_get(c, gensym("step")), -10, 10, 1, 1);
  attr_addfilter_clip(class_attr_get(c, gensym("gain")), 0.25, 0.5, 1, 0);
  attr_addfilter_clip(class_attr_get(c, gensym("limits")), 5, 1000, 0, 1);
  attr_addfilter_clip(class_attr_get(c, gensym("even")), 0, 101, 0, 1);
  set_with(c, "even", (t_method)set_even);
  set_with(c, "name", (t_method)set_name);

  class_attr_addattr_parse(c, "step", "label", gensym("symbol"), "Step Size");
  class_attr_addattr_parse(c, "step", "order", gensym("long"), "3");
  class_attr_addattr_parse(c, "gain", "scale", gensym("float64"), "2.5");
  class_attr_addattr_parse(c, "unit", "choices", gensym("atom"), "none \"per second\" 4 0.5");
  class_attr_addattr_format(c, "gain", "range", gensym("atom"), "slf", gensym("of"), (t_long)2,
                            0.75);
  class_register(common_symbols->box, c);
}
