// The operations of the bare host. They do as little as the headers allow: no
// result where none is promised, and no block for no bytes.

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "host.h"
#include "runtime/blocks.h"
#include "runtime/symbols.h"

struct t_attr {
  bare::Attribute described;
  t_attr_setter setter = nullptr;
};
struct t_class {
  t_constructor constructor;
  t_long size;
};
struct t_hashtab {};
struct t_atomarray {
  std::vector<double> numbers;
};
struct t_dictionary {};
struct t_outlet {};
struct t_qelem {};

namespace {

bare::Host the_host;
std::vector<t_attr *> the_attributes;
t_class the_class{};
t_hashtab the_methods;
int the_signal_entry = 0;
t_notify_handler the_notify = nullptr;
t_common_symbols the_symbols{};

void called(std::string call) { the_host.calls.push_back(std::move(call)); }

t_attr *attribute(const t_symbol *name) {
  for (t_attr *attr : the_attributes)
    if (attr->described.name == name->name) return attr;
  return nullptr;
}

void *at(void *x, t_long offset) { return static_cast<char *>(x) + offset; }

t_attr *new_attribute(const bare::Attribute &described) {
  auto *attr = new t_attr{described};
  the_host.attributes.push_back(described);
  return attr;
}

void tell(void *x, t_attr *attr) {
  if (the_notify != nullptr) the_notify(x, nullptr, the_symbols.attr_modified, x, attr);
}

t_result append(t_symbol *key, bare::Entry entry) {
  called(std::string("append ") + key->name);
  the_host.dictionary.emplace_back(key->name, std::move(entry));
  return RESULT_OK;
}

}  // namespace

namespace bare {

Host &host() { return the_host; }

void start_anew() {
  the_host = {};
  for (const t_attr *attr : the_attributes) delete attr;
  the_attributes.clear();
  the_notify = nullptr;
}

}  // namespace bare

const t_common_symbols *common_symbols = &the_symbols;

void common_symbols_init() {
  the_symbols = {gensym("box"), gensym("name"), gensym("getname"), gensym("edit"),
                 gensym("attr_modified")};
}

t_symbol *gensym(const char *text) { return runtime::intern(text); }
t_symbol *gensym_tr(const char *text) { return gensym(text); }
const char *str_tr(const char *text) { return gensym(text)->name; }
t_symbol *symbol_unique() { return runtime::unique_symbol(); }

// --- memory

void *sysmem_newptr(t_long size) {
  called("newptr " + std::to_string(size));
  if (size == 0) return nullptr;
  ++the_host.blocks_alive;
  return runtime::new_block(size, false);
}

void *sysmem_newptrclear(t_long size) {
  if (size == 0) return nullptr;
  ++the_host.blocks_alive;
  return runtime::new_block(size, true);
}

void *sysmem_resizeptrclear(void *block, t_long size) {
  if (block == nullptr) return sysmem_newptrclear(size);
  if (size == 0) return nullptr;
  return runtime::resize_block(block, size);
}

void sysmem_freeptr(void *block) {
  called("freeptr");
  if (block != nullptr) --the_host.blocks_alive;
  runtime::free_block(block);
}

// --- the class

t_class *class_new(const char *, t_constructor constructor, t_destructor, t_long size,
                   t_menu_function, t_argspec, t_long) {
  the_class = {constructor, size};
  return &the_class;
}

t_result class_addmethod(t_class *, t_method method, const char *name, t_argspec) {
  if (std::string(name) == "notify") the_notify = reinterpret_cast<t_notify_handler>(method);
  return RESULT_OK;
}

t_result class_dspinit(t_class *) { return RESULT_OK; }

t_hashtab *class_extra_lookup(t_class *, t_symbol *) { return &the_methods; }

void *hashtab_lookup(const t_hashtab *, t_symbol *) { return &the_signal_entry; }

t_result class_register(t_symbol *name_space, t_class *c) {
  called("class_register");
  if (the_host.makes_a_box_while_registering && c == &the_class)
    the_host.box_made_while_registering = c->constructor(name_space, 0, nullptr);
  return RESULT_OK;
}

t_attr *attr_offset_new(const char *name, t_symbol *type, t_long offset) {
  return new_attribute({name, type->name, offset, 1, 0});
}

t_attr *attr_offset_array_new(const char *name, t_symbol *type, t_long maximum, t_long count_offset,
                              t_long offset) {
  return new_attribute({name, type->name, offset, maximum, count_offset});
}

t_result class_addattr(t_class *, t_attr *attr) {
  the_attributes.push_back(attr);
  return RESULT_OK;
}

t_attr *class_attr_get(t_class *, t_symbol *name) { return attribute(name); }

t_result attr_addfilter_clip(t_attr *, double, double, t_long, t_long) { return RESULT_OK; }

t_result class_attr_addattr_format(t_class *, const char *, const char *, t_symbol *, const char *,
                                   ...) {
  return RESULT_OK;
}

t_result class_attr_addattr_parse(t_class *, const char *, const char *, t_symbol *, const char *) {
  return RESULT_OK;
}

t_result object_addattr_parse(void *object, const char *property, t_symbol *type,
                              const char *text) {
  if (object == &the_signal_entry)
    called(std::string("signal ") + property + ' ' + type->name + ' ' + text);
  return RESULT_OK;
}

// --- objects

void *object_alloc(t_class *c) {
  return c == &the_class ? std::calloc(1, static_cast<std::size_t>(c->size)) : nullptr;
}

void *object_new_typed(t_symbol *, t_symbol *, t_long, const t_atom *) { return nullptr; }

t_result object_free(void *) { return RESULT_OK; }

t_result object_attach_byptr_register(void *, void *, t_symbol *) { return RESULT_OK; }

void attr_args_process(void *, t_long, const t_atom *) {}

t_result object_attr_setsym(void *x, t_symbol *name, t_symbol *value) {
  t_attr *attr = attribute(name);
  t_atom atom{};
  atom.type = ATOM_SYMBOL;
  atom.value.symbol = value;
  if (attr->setter != nullptr)
    attr->setter(x, attr, 1, &atom);
  else
    *static_cast<t_symbol **>(at(x, attr->described.offset)) = value;
  tell(x, attr);
  return RESULT_OK;
}

t_result object_attr_setdouble_array(void *x, t_symbol *name, t_long count, const double *values) {
  t_attr *attr = attribute(name);
  const std::vector<double> copy(values, values + count);
  auto *stored = static_cast<double *>(at(x, attr->described.offset));
  for (std::size_t i = 0; i < copy.size(); ++i) stored[i] = copy[i];
  *static_cast<t_long *>(at(x, attr->described.count_offset)) = count;
  tell(x, attr);
  return RESULT_OK;
}

t_result object_attr_setdisabled(void *, t_symbol *, t_long) { return RESULT_OK; }

void *object_method_imp(void *object, t_symbol *message, ...) {
  va_list arguments;
  va_start(arguments, message);
  void *result = nullptr;
  const std::string text = message->name;
  if (text == "getname") {
    result = gensym(static_cast<const t_attr *>(object)->described.name.c_str());
  } else if (text == "setmethod") {
    auto *attr = static_cast<t_attr *>(object);
    const t_symbol *which = va_arg(arguments, t_symbol *);
    const auto method = va_arg(arguments, t_method);
    the_host.set_methods.push_back({attr->described.name, which->name, method});
    if (which == gensym("set")) attr->setter = reinterpret_cast<t_attr_setter>(method);
  } else if (text == "setatoms64") {
    const auto count = va_arg(arguments, t_long);
    const auto *atoms = va_arg(arguments, const t_atom *);
    called("setatoms64 " + std::to_string(count));
    auto *array = static_cast<t_atomarray *>(object);
    array->numbers.clear();
    for (t_long i = 0; i < count; ++i) array->numbers.push_back(atoms[i].value.number);
  }
  va_end(arguments);
  return result;
}

void object_error(void *, const char *format, ...) {
  char text[512];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  the_host.errors.emplace_back(text);
}

// --- values and dictionaries

t_result atom_setfloat(t_atom *atom, double value) {
  called("setfloat");
  atom->type = ATOM_FLOAT;
  atom->value.number = value;
  return RESULT_OK;
}

t_result atom_setsym(t_atom *atom, t_symbol *value) {
  atom->type = ATOM_SYMBOL;
  atom->value.symbol = value;
  return RESULT_OK;
}

t_symbol *atom_getsym(const t_atom *atom) { return atom->value.symbol; }

t_atomarray *atomarray_new(t_long, const t_atom *) {
  called("atomarray_new");
  return new t_atomarray;
}

t_dictionary *dictionary_new() {
  static t_dictionary only;
  return &only;
}

t_result dictionary_clear(t_dictionary *) {
  called("dictionary_clear");
  the_host.dictionary.clear();
  return RESULT_OK;
}

t_result dictionary_appendsym(t_dictionary *, t_symbol *key, t_symbol *value) {
  return append(key, value->name);
}

t_result dictionary_appendfloat(t_dictionary *, t_symbol *key, double value) {
  return append(key, value);
}

t_result dictionary_appendatomarray(t_dictionary *, t_symbol *key, t_atomarray *value) {
  const t_result result = append(key, value->numbers);
  delete value;
  return result;
}

t_dictionary *dictobj_register(t_dictionary *d, t_symbol **) { return d; }

// --- outlets, tasks, audio

t_outlet *outlet_new(void *, const char *) {
  static t_outlet only;
  return &only;
}

t_result outlet_anything(t_outlet *, t_symbol *message, t_long, const t_atom *argv) {
  called("outlet_anything");
  the_host.sent.push_back(std::string(message->name) + ' ' + argv[0].value.symbol->name);
  return RESULT_OK;
}

t_qelem *qelem_new(void *, t_task) {
  static t_qelem only;
  return &only;
}

void qelem_set(t_qelem *) { ++the_host.tasks_set; }
void qelem_unset(t_qelem *) {}
void qelem_free(t_qelem *) {}

float sys_getsr() { return 48000.0F; }
