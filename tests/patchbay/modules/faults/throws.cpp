// Lets exceptions out of each function that the host calls, one a class.

#include <map>
#include <stdexcept>
#include <string>

#include "brontal/brontal.h"

namespace {

struct Box {
  t_signal_object object;
  t_qelem *task;
  t_long value;
};

std::map<std::string, t_class *> classes;

void throw_it(void *) { throw std::runtime_error("let out"); }
void throw_a_number(void *) { throw 42; }
void later(void *x) { qelem_set(static_cast<Box *>(x)->task); }
t_result throw_from_setter(void *, t_attr *, t_long, t_atom *) { throw 42; }
void throw_from_list(void *, t_symbol *, t_long, t_atom *) { throw 42; }
t_long throw_from_notify(void *, t_symbol *, t_symbol *, void *, void *) { throw 42; }
void throw_from_assist(void *, void *, t_long, t_long, char *) { throw 42; }
void throw_from_dsp64(void *, void *, short *, double, t_long, t_long) { throw 42; }

void *make(t_symbol *name, t_long, t_atom *) {
  auto *x = static_cast<Box *>(object_alloc(classes.at(name->name)));
  if (x != nullptr) x->task = qelem_new(x, throw_a_number);
  return x;
}
void *throw_from_constructor(t_symbol *name, t_long, t_atom *) {
  object_alloc(classes.at(name->name));
  throw std::runtime_error("let out");
}

void destroy(void *x) { qelem_free(static_cast<Box *>(x)->task); }
void throw_from_destructor(void *x) {
  destroy(x);
  throw 42;
}

t_class *describe(const char *name, t_constructor constructor, t_destructor destructor) {
  t_class *c = class_new(name, constructor, destructor, sizeof(Box), nullptr, ARGS_VARIABLE, 0);
  classes[name] = c;
  return c;
}

template <typename Function>
t_method as_method(Function *function) {
  return reinterpret_cast<t_method>(function);
}

}  // namespace

extern "C" void ext_main() {
  common_symbols_init();
  t_class *c = describe("throws", make, destroy);
  class_dspinit(c);
  class_addmethod(c, as_method(throw_it), "bang", ARGS_NONE);
  class_addmethod(c, as_method(throw_a_number), "number", ARGS_NONE);
  class_addmethod(c, as_method(throw_from_list), "list", ARGS_VARIABLE);
  class_addmethod(c, as_method(later), "later", ARGS_NONE);
  class_addmethod(c, as_method(throw_it), "dblclick", ARGS_PRIVATE);
  class_addmethod(c, as_method(throw_from_assist), "assist", ARGS_PRIVATE);
  class_addmethod(c, as_method(throw_from_notify), "notify", ARGS_PRIVATE);
  class_addmethod(c, as_method(throw_from_dsp64), "dsp64", ARGS_PRIVATE);
  class_addattr(c, attr_offset_new("value", gensym("long"), offsetof(Box, value)));
  class_addattr(c, attr_offset_new("plain", gensym("long"), offsetof(Box, value)));
  object_method_imp(class_attr_get(c, gensym("value")), gensym("setmethod"), gensym("set"),
                    as_method(throw_from_setter));
  class_register(common_symbols->box, c);
  class_register(common_symbols->box,
                 describe("throws_from_constructor", throw_from_constructor, nullptr));
  class_register(common_symbols->box,
                 describe("throws_from_destructor", make, throw_from_destructor));
}
