#include "objects.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "atomarrays.h"
#include "attributes.h"
#include "brontal/object.h"
#include "call_out.h"
#include "dictionaries.h"
#include "gate.h"
#include "instances.h"
#include "lookup.h"
#include "state.h"
#include "violations.h"
#include "words.h"

using patchbay::Instance;
using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

namespace patchbay {

bool destroy(State &s, void *object, Op by) {
  const Ledger::Entry *entry = find_entry(s, by, object);
  if (entry == nullptr) return false;
  const char *problem = "which is not the module's to free";
  if (entry->kind == Kind::instance) {
    auto *instance = static_cast<Instance *>(entry->record.get());
    if (!instance->dying) {
      destroy_instance(s, *instance, by);
      return true;
    }
    problem = "which is being freed";
  } else if (entry->kind == Kind::dictionary) {
    destroy_dictionary(s, static_cast<t_dictionary *>(object), by);
    return true;
  } else if (entry->kind == Kind::atom_array && !entry->owned_by_host) {
    s.ledger.release(object, by);
    return true;
  }
  report_given(s, by, Ledger::describe(*entry) + ", " + problem);
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
  if (message == patchbay::words().getname) return attr->name;
  if (message != patchbay::words().setmethod) return nullptr;
  const t_symbol *which = va_arg(*arguments, t_symbol *);
  const auto method = va_arg(*arguments, t_method);
  if (which == patchbay::words().set)
    attr->setter = reinterpret_cast<t_attr_setter>(method);
  else if (which != patchbay::words().get || method != nullptr) {
    if (which != nullptr)
      report(s, "setmethod was given '" + patchbay::as_text(which) +
                    "'; it takes \"set\", or \"get\" without a method");
    return nullptr;
  }
  return attr;
}

void *send_to_array(t_atomarray *array, const t_symbol *message, va_list *arguments) {
  if (message != patchbay::words().setatoms64) return nullptr;
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
        const auto *entry = patchbay::find_entry(s, op, object);
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
        const auto *entry = patchbay::find_entry(s, op, object);
        if (entry == nullptr) return 0;
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
