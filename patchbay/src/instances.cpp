#include "instances.h"

#include <algorithm>

#include "audio.h"
#include "brontal/object.h"
#include "call_out.h"
#include "gate.h"
#include "lookup.h"
#include "runtime/blocks.h"
#include "state.h"
#include "values.h"

using patchbay::Instance;
using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

namespace patchbay {

Instance *find_instance(State &s, Op op, const void *x) {
  return find<Instance>(s, op, Kind::instance, x);
}

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
  return s.ledger.find(made) != nullptr ? made : nullptr;  // it may have freed itself
}

void destroy_instance(State &s, Instance &x, Op by) {
  x.dying = true;
  if (x.type->destructor != nullptr)
    call_module(s, x.type->name, [&] { x.type->destructor(x.memory); });
  forget_instance(s, x, by);
}

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

}  // namespace patchbay

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
