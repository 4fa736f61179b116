// The class, the life of a box, and its small handlers.

#include "veltane.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>

t_class *s_veltane_class = nullptr;

namespace {

constexpr char no_dictionary[] = "could not create dictionary named %s";

// One row of the table of attributes; what is null or 0 does not apply.
struct AttributeRow {
  const char *name;
  const char *type;
  std::size_t offset;
  const char *style;
  const char *choices;
  const char *label;
  const char *category;
  bool basic;
  double minimum;
  double maximum;
};

#define AT(field) offsetof(t_veltane, field)

// "passband_ripple" is known to patches by this label and this category.
constexpr AttributeRow attributes[] = {
    {"name", "symbol", AT(name), nullptr, nullptr, "Dictionary Name", "Dictionary", false, 0, 0},
    {"topology", "symbol", AT(topology), "enum", "butterworth chebyshev-1 chebyshev-2", "Topology",
     "Filter", true, 0, 0},
    {"response", "symbol", AT(response), "enum", "lowpass highpass bandpass bandstop", "Response",
     "Filter", true, 0, 0},
    {"units", "symbol", AT(units), "enum", "hertz normalized radians", "Frequency Units",
     "Behavior", false, 0, 0},
    {"samplerate", "long", AT(samplerate), nullptr, nullptr, "Sample Rate", "Behavior", false, 0,
     0},
    {"order", "long", AT(order), nullptr, nullptr, "Order", "Filter", true, 2, 200},
    {"frequency", "float64", AT(frequency), nullptr, nullptr, "Cutoff Frequencies", "Filter", true,
     0, 0},
    {"passband_ripple", "float64", AT(passband_ripple), nullptr, nullptr, "Frame Size",
     "Chebyshev-I Passband Ripple", false, 0.1, 48},
    {"stopband_attenuation", "float64", AT(stopband_attenuation), nullptr, nullptr,
     "Chebyshev-II Stopband Attenuation", "Filter", false, 6, 240},
    {"zpk_output", "long", AT(zpk_output), "onoff", nullptr, "Zeroes, Poles, and Gain",
     "Dictionary", false, 0, 0},
    {"sos_output", "long", AT(sos_output), "onoff", nullptr, "Second-Order Section Coefficients",
     "Dictionary", false, 0, 0},
    {"tf_output", "long", AT(tf_output), "onoff", nullptr, "Transfer Function Coefficients",
     "Dictionary", false, 0, 0},
};

#undef AT

// The host did not do something that the class needs.
struct Incomplete {};

void require(t_result result) {
  if (result != RESULT_OK) throw Incomplete{};
}

template <typename T>
T *require(T *given) {
  if (given == nullptr) throw Incomplete{};
  return given;
}

t_symbol *symbol(const char *text) { return require(gensym(text)); }

t_attr *new_attribute(const AttributeRow &row) {
  const auto offset = static_cast<t_long>(row.offset);
  if (std::strcmp(row.name, "frequency") != 0)
    return attr_offset_new(row.name, symbol(row.type), offset);
  return attr_offset_array_new(row.name, symbol(row.type), 2, offsetof(t_veltane, frequency_count),
                               offset);
}

template <typename Function>
t_method method(Function *function) {
  return reinterpret_cast<t_method>(function);
}

void add_property(t_class *c, const AttributeRow &row, const char *property, const char *type,
                  const char *text) {
  require(class_attr_addattr_parse(c, row.name, property, symbol(type), text));
}

void add_attribute(t_class *c, const AttributeRow &row) {
  t_attr *attr = new_attribute(row);
  require(class_addattr(c, attr));
  if (row.maximum > row.minimum) require(attr_addfilter_clip(attr, row.minimum, row.maximum, 1, 1));
  if (std::strcmp(row.name, "name") == 0) {
    attr = require(class_attr_get(c, symbol("name")));
    // What these yield says nothing.
    object_method_imp(attr, symbol("setmethod"), symbol("get"), t_method{nullptr});
    object_method_imp(attr, symbol("setmethod"), symbol("set"), method(veltane_setname));
  }
  if (row.style != nullptr) add_property(c, row, "style", "symbol", row.style);
  if (row.choices != nullptr) add_property(c, row, "enumvals", "atom", row.choices);
  require(class_attr_addattr_format(c, row.name, "label", symbol("symbol"), "s",
                                    require(gensym_tr(row.label))));
  add_property(c, row, "category", "symbol", require(str_tr(row.category)));
  if (row.basic) add_property(c, row, "basic", "long", "1");
}

// The class inherits "signal", which means nothing to a box without signal
// inlets; keep it out of the documentation.
void hide_signal(t_class *c) {
  t_hashtab *methods = class_extra_lookup(c, symbol("methods"));
  if (methods == nullptr) return;
  void *signal = hashtab_lookup(methods, symbol("signal"));
  if (signal != nullptr) require(object_addattr_parse(signal, "undocumented", symbol("long"), "1"));
}

// Raises Incomplete.
void describe(t_class *c) {
  require(class_addmethod(c, method(veltane_bang), "bang", ARGS_NONE));
  require(class_addmethod(c, method(veltane_dblclick), "dblclick", ARGS_PRIVATE));
  require(class_addmethod(c, method(veltane_assist), "assist", ARGS_PRIVATE));
  require(class_addmethod(c, method(veltane_dsp64), "dsp64", ARGS_PRIVATE));
  require(class_addmethod(c, method(veltane_notify), "notify", ARGS_PRIVATE));
  for (const AttributeRow &row : attributes) add_attribute(c, row);
  require(class_dspinit(c));
  hide_signal(c);
}

}  // namespace

void ext_main() {
  t_class *c = class_new("veltane", veltane_new, reinterpret_cast<t_destructor>(veltane_free),
                         sizeof(t_veltane), nullptr, ARGS_VARIABLE, 0);
  common_symbols_init();
  try {
    describe(c);
  } catch (const Incomplete &) {
    return;  // a class that lacks a message or an attribute is not for users
  }
  // First, so that the host may make boxes from the registration on.
  s_veltane_class = c;
  if (class_register(common_symbols->box, c) != RESULT_OK) s_veltane_class = nullptr;
}

t_long whole_hertz(double samplerate) {
  constexpr double limit = 9223372036854775808.0;  // 2^63
  if (std::isnan(samplerate)) return 0;
  if (samplerate >= limit) return std::numeric_limits<t_long>::max();
  if (samplerate <= -limit) return std::numeric_limits<t_long>::min();
  return static_cast<t_long>(samplerate);
}

void *veltane_new(t_symbol * /*s*/, t_long argc, t_atom *argv) {
  auto *x = static_cast<t_veltane *>(object_alloc(s_veltane_class));
  if (x == nullptr) return nullptr;

  x->topology = gensym("chebyshev-2");
  x->response = gensym("lowpass");
  x->order = 5;
  x->units = gensym("hertz");
  x->samplerate = 0;
  // The cutoffs in Hz and their normalised values agree, so that none has to be
  // converted before the first change.
  x->actual_samplerate = whole_hertz(sys_getsr());
  x->frequency[0] = static_cast<double>(x->actual_samplerate) * 0.0625;
  x->frequency[1] = static_cast<double>(x->actual_samplerate) * 0.4375;
  x->normalized_frequency[0] = 0.125;
  x->normalized_frequency[1] = 0.875;
  x->frequency_count = 1;
  x->passband_ripple = 0.5;
  x->stopband_attenuation = 96.0;
  x->zpk_output = 1;
  x->sos_output = 1;
  x->tf_output = 0;

  x->design_task = qelem_new(x, reinterpret_cast<t_task>(veltane_bang));
  object_attr_setdisabled(x, gensym("passband_ripple"), 1);
  x->dict = dictionary_new();
  x->outlet = outlet_new(x, "dictionary");
  object_attach_byptr_register(x, x, common_symbols->box);
  attr_args_process(x, argc, argv);
  if (x->name == nullptr) object_attr_setsym(x, common_symbols->name, symbol_unique());
  x->ready = 1;
  return x;
}

void veltane_free(t_veltane *x) {
  qelem_free(x->design_task);
  object_free(x->dict);
  if (x->viewer != nullptr) object_free(x->viewer);
}

t_result veltane_setname(t_veltane *x, t_attr * /*attr*/, t_long /*argc*/, t_atom *argv) {
  t_symbol *s = atom_getsym(argv);
  if (s == x->name && s != nullptr) {
    if (x->dict == nullptr) object_error(x, no_dictionary, s->name);
    return RESULT_OK;
  }
  x->dict = dictobj_register(x->dict, &s);
  x->name = s;
  if (x->dict == nullptr) object_error(x, no_dictionary, s != nullptr ? s->name : "");
  return RESULT_OK;
}

void veltane_dblclick(t_veltane *x) {
  if (x->name == nullptr || x->dict == nullptr) return;
  t_atom name{};
  atom_setsym(&name, x->name);
  void *viewer = object_new_typed(common_symbols->box, gensym("dict"), 1, &name);
  if (viewer == nullptr) return;
  object_method_imp(viewer, common_symbols->edit);
  if (x->viewer != nullptr) object_free(x->viewer);
  x->viewer = viewer;
}

void veltane_assist(t_veltane * /*x*/, void * /*box*/, t_long io, t_long index, char *text) {
  if (io == ASSIST_INLET)
    std::snprintf(text, BRONTAL_ASSIST_SIZE, "bang generates filter responses");
  else if (index == 0)
    std::snprintf(text, BRONTAL_ASSIST_SIZE, "filter coefficients");
}

void veltane_dsp64(t_veltane *x, void * /*dsp*/, short * /*count*/, double samplerate,
                   t_long /*maxvectorsize*/, t_long /*flags*/) {
  if (x->samplerate < 1) x->actual_samplerate = whole_hertz(samplerate);
}
