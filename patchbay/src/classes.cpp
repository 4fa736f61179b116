#include "classes.h"

#include <algorithm>

#include "attributes.h"
#include "gate.h"
#include "lookup.h"
#include "modules.h"
#include "runtime/symbols.h"
#include "state.h"
#include "violations.h"
#include "words.h"

using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

namespace patchbay {

t_class *find_class(State &s, Op op, const t_class *c) {
  return find<t_class>(s, op, Kind::box_class, c);
}

t_class *class_to_build(State &s, Op op, const t_class *c) {
  return is_loading(s, op) ? find_class(s, op, c) : nullptr;
}

Method *find_method(const t_class &c, const t_symbol *name) {
  const auto found = std::find_if(c.methods.begin(), c.methods.end(),
                                  [&](const Method *method) { return method->name == name; });
  return found == c.methods.end() ? nullptr : *found;
}

t_method find_private(const t_class &c, const t_symbol *message) {
  const Method *method = find_method(c, message);
  return method != nullptr && method->args == ARGS_PRIVATE ? method->function : nullptr;
}

void add_method(State &s, Op op, t_class &c, Method method) {
  auto *made = s.ledger.make<Method>(Kind::method, op, std::move(method));
  s.ledger.owned_by_host(made);
  c.methods.push_back(made);
}

t_class *make_class(State &s, t_class description) {
  auto *c = s.ledger.make<t_class>(Kind::box_class, Op::class_new, std::move(description));
  s.ledger.owned_by_host(c);
  s.all_classes.push_back(c);
  return c;
}

void destroy_class(State &s, t_class *c) {
  for (const Method *method : c->methods) s.ledger.release(method, Op::class_new);
  for (const t_attr *attr : c->attributes) s.ledger.release(attr, Op::class_new);
  if (c->method_table != nullptr) s.ledger.release(c->method_table, Op::class_new);
  if (c->name_space != nullptr) s.classes.erase({c->name_space, c->name});
  std::erase(s.all_classes, c);
  s.ledger.release(c, Op::class_new);
}

}  // namespace patchbay

namespace {

const char *text_of(t_argspec args) {
  switch (args) {
    case ARGS_NONE: return "none";
    case ARGS_VARIABLE: return "variable";
    case ARGS_PRIVATE: return "private";
  }
  return nullptr;
}

}  // namespace

t_class *class_new(const char *name, t_constructor constructor, t_destructor destructor,
                   t_long size, t_menu_function /*menu*/, t_argspec args, t_long /*flags*/) {
  return operation(
      Op::class_new, static_cast<t_class *>(nullptr),
      [&](State &s) -> t_class * {
        if (!patchbay::is_loading(s, Op::class_new)) return nullptr;
        if (name == nullptr || constructor == nullptr || args != ARGS_VARIABLE ||
            size < static_cast<t_long>(sizeof(t_object))) {
          report(s,
                 "class_new needs a name, a constructor of variable arguments and a size of at "
                 "least an object header");
          return nullptr;
        }
        return patchbay::make_class(s, {.name = runtime::intern(name),
                                        .constructor = constructor,
                                        .destructor = destructor,
                                        .size = size,
                                        .module = s.loading});
      },
      name, size);
}

t_result class_addmethod(t_class *c, t_method method, const char *name, t_argspec args) {
  constexpr Op op = Op::class_addmethod;
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        t_class *found = patchbay::class_to_build(s, op, c);
        if (found == nullptr || method == nullptr || name == nullptr || text_of(args) == nullptr)
          return RESULT_FAILED;
        add_method(s, op, *found, {runtime::intern(name), method, args, {}});
        return RESULT_OK;
      },
      name, text_of(args));
}

t_result class_dspinit(t_class *c) {
  constexpr Op op = Op::class_dspinit;
  return operation(op, RESULT_FAILED, [&](State &s) {
    t_class *found = patchbay::class_to_build(s, op, c);
    if (found == nullptr) return RESULT_FAILED;
    if (found->size < static_cast<t_long>(sizeof(t_signal_object))) {
      report(s,
             "class_dspinit was given a class whose instances do not begin with a "
             "t_signal_object");
      return RESULT_FAILED;
    }
    found->takes_signals = true;
    add_method(s, op, *found, {patchbay::words().signal, nullptr, ARGS_PRIVATE, {}});
    return RESULT_OK;
  });
}

t_hashtab *class_extra_lookup(t_class *c, t_symbol *table) {
  constexpr Op op = Op::class_extra_lookup;
  return operation(
      op, static_cast<t_hashtab *>(nullptr),
      [&](State &s) -> t_hashtab * {
        t_class *found = patchbay::class_to_build(s, op, c);
        if (found == nullptr || table != patchbay::words().methods) return nullptr;
        if (found->method_table == nullptr) {
          found->method_table = s.ledger.make<t_hashtab>(Kind::method_table, op, t_hashtab{found});
          s.ledger.owned_by_host(found->method_table);
        }
        return found->method_table;
      },
      table);
}

void *hashtab_lookup(const t_hashtab *table, t_symbol *key) {
  constexpr Op op = Op::hashtab_lookup;
  return operation(
      op, static_cast<void *>(nullptr),
      [&](State &s) -> void * {
        const auto *found = patchbay::find<t_hashtab>(s, op, Kind::method_table, table);
        if (found == nullptr) return nullptr;
        return patchbay::find_method(*found->owner, key);
      },
      key);
}

t_result class_register(t_symbol *name_space, t_class *c) {
  constexpr Op op = Op::class_register;
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        t_class *found = patchbay::class_to_build(s, op, c);
        if (found == nullptr || name_space == nullptr || found->name_space != nullptr)
          return RESULT_FAILED;
        if (!s.classes.try_emplace({name_space, found->name}, found).second) return RESULT_FAILED;
        found->name_space = name_space;
        return RESULT_OK;
      },
      name_space);
}
