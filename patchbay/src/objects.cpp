#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "runtime/blocks.h"
#include "runtime/symbols.h"
#include "state.h"

using patchbay::Instance;
using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

namespace patchbay {

void *allocate_instance(State &s, t_class &c, Op op) {
  void *memory = runtime::new_block(c.size, true);
  if (memory == nullptr) return nullptr;
  static_cast<t_object *>(memory)->host[0] = &c;
  auto instance = std::make_shared<Instance>(&c, memory);
  s.instances.push_back(instance.get());
  s.ledger.add(memory, Kind::instance, op, std::move(instance));
  return memory;
}

void *new_instance(State &s, t_class &c, const Values &arguments) {
  std::vector<t_atom> atoms = to_atoms(arguments);
  void *made = nullptr;
  call_module(s, c.name, [&] {
    made = c.constructor(c.name, static_cast<t_long>(atoms.size()), atoms.data());
  });
  const Instance *instance = find_instance(s, Op::object_alloc, made);
  if (instance == nullptr) return nullptr;
  if (s.audio) send_dsp64(s, *instance);
  return s.ledger.alive(made) ? made : nullptr;  // it may have freed itself
}

namespace {

void destroy_instance(State &s, Instance &x, Op by) {
  x.dying = true;
  if (x.type->destructor != nullptr)
    call_module(s, x.type->name, [&] { x.type->destructor(x.memory); });
  forget_instance(s, x, by);
}

}  // namespace

void forget_instance(State &s, Instance &x, Op by) {
  x.freed = true;
  x.clients.clear();
  forget_client(s, x.memory);
  for (const t_outlet *outlet : x.outlets) s.ledger.release(outlet, by);
  std::erase(s.instances, &x);
  std::erase(s.boxes, static_cast<Box>(x.memory));
  void *memory = x.memory;
  s.ledger.release(memory, by);
  runtime::free_block(memory);
}

bool destroy(State &s, void *object, Op by) {
  std::string problem;
  const Ledger::Entry *entry = s.ledger.find(object, problem);
  if (entry != nullptr && entry->kind == Kind::instance) {
    auto *instance = static_cast<Instance *>(entry->record.get());
    if (!instance->dying) {
      destroy_instance(s, *instance, by);
      return true;
    }
    problem = Ledger::describe(*entry) + ", which is being freed";
  } else if (entry != nullptr && entry->kind == Kind::dictionary) {
    destroy_dictionary(s, static_cast<t_dictionary *>(object), by);
    return true;
  } else if (entry != nullptr && entry->kind == Kind::atom_array && !entry->owned_by_host) {
    s.ledger.release(object, by);
    return true;
  } else if (entry != nullptr) {
    problem = Ledger::describe(*entry) + ", which is not for it to free";
  }
  if (!problem.empty()) report(s, std::string(name_of(by)) + " was given " + problem);
  return false;
}

}  // namespace patchbay

namespace {

std::string formatted(const char *format, va_list arguments) {
  va_list measured;
  va_copy(measured, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, measured);
  va_end(measured);
  std::string text(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
  std::vsnprintf(text.data(), text.size(), format, arguments);
  text.pop_back();
  return text;
}

void *send_to_attribute(State &s, t_attr *attr, const t_symbol *message, va_list *arguments) {
  if (message == runtime::intern("getname")) return attr->name;
  if (message != runtime::intern("setmethod")) return nullptr;
  const t_symbol *which = va_arg(*arguments, t_symbol *);
  const auto method = va_arg(*arguments, t_method);
  if (which == runtime::intern("set"))
    attr->setter = reinterpret_cast<t_attr_setter>(method);
  else if (which != runtime::intern("get") || method != nullptr) {
    if (which != nullptr)
      report(s, "setmethod was given '" + patchbay::as_text(which) +
                    "'; it takes \"set\", or \"get\" without a method");
    return nullptr;
  }
  return attr;
}

void *send_to_array(t_atomarray *array, const t_symbol *message, va_list *arguments) {
  if (message != runtime::intern("setatoms64")) return nullptr;
  const auto count = va_arg(*arguments, t_long);
  const auto *atoms = va_arg(*arguments, const t_atom *);
  if (count < 0 || (count > 0 && atoms == nullptr)) return nullptr;
  array->atoms.assign(atoms, atoms + count);
  return array;
}

void *send_to_instance(State &s, const Instance &x, const t_symbol *message) {
  const Method *method = patchbay::find_method(*x.type, message);
  if (method == nullptr || method->args != ARGS_NONE) return nullptr;
  void *memory = x.memory;
  const bool done = patchbay::call_module(
      s, message, [&] { reinterpret_cast<void (*)(void *)>(method->function)(memory); });
  return done ? memory : nullptr;
}

}  // namespace

void *object_alloc(t_class *c) {
  constexpr Op op = Op::object_alloc;
  return operation(op, static_cast<void *>(nullptr), [&](State &s) -> void * {
    t_class *found = patchbay::find_class(s, op, c);
    return found == nullptr ? nullptr : patchbay::allocate_instance(s, *found, op);
  });
}

void *object_new_typed(t_symbol *name_space, t_symbol *class_name, t_long argc,
                       const t_atom *argv) {
  return operation(
      Op::object_new_typed, static_cast<void *>(nullptr),
      [&](State &s) -> void * {
        const auto found = s.classes.find({name_space, class_name});
        return found == s.classes.end()
                   ? nullptr
                   : patchbay::new_instance(s, *found->second, patchbay::from_atoms(argc, argv));
      },
      name_space, class_name);
}

t_result object_free(void *object) {
  constexpr Op op = Op::object_free;
  return operation(op, RESULT_FAILED, [&](State &s) {
    return patchbay::destroy(s, object, op) ? RESULT_OK : RESULT_FAILED;
  });
}

void *object_method_imp(void *object, t_symbol *message, ...) {
  constexpr Op op = Op::object_method_imp;
  va_list arguments;
  va_start(arguments, message);
  void *result = operation(
      op, static_cast<void *>(nullptr),
      [&](State &s) -> void * {
        std::string problem;
        const auto *entry = s.ledger.find(object, problem);
        if (!problem.empty()) report(s, std::string(name_of(op)) + " was given " + problem);
        if (entry == nullptr) return nullptr;
        switch (entry->kind) {
          case Kind::attribute:
            return send_to_attribute(s, static_cast<t_attr *>(object), message, &arguments);
          case Kind::atom_array:
            return send_to_array(static_cast<t_atomarray *>(object), message, &arguments);
          case Kind::instance:
            return send_to_instance(s, *static_cast<Instance *>(entry->record.get()), message);
          default: return nullptr;
        }
      },
      message);
  va_end(arguments);
  return result;
}

void object_error(void *object, const char *format, ...) {
  constexpr Op op = Op::object_error;
  va_list arguments;
  va_start(arguments, format);
  operation(
      op, 0,
      [&](State &s) {
        if (object == nullptr || format == nullptr) return 0;
        std::string problem;
        const auto *entry = s.ledger.find(object, problem);
        if (entry == nullptr) {
          report(s, std::string(name_of(op)) + " was given " + problem);
          return 0;
        }
        patchbay::Post post{nullptr, "patchbay", formatted(format, arguments)};
        if (entry->kind == Kind::instance) {
          post.box = static_cast<patchbay::Box>(object);
          post.source = static_cast<const Instance *>(entry->record.get())->type->name->name;
        }
        s.posts.push_back(std::move(post));
        return 0;
      },
      format);
  va_end(arguments);
}
