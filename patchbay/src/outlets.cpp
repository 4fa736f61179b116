#include "outlets.h"

#include "call_out.h"
#include "gate.h"
#include "instances.h"
#include "lookup.h"
#include "runtime/symbols.h"
#include "state.h"
#include "values.h"
#include "violations.h"

using patchbay::as_text;
using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

t_outlet *outlet_new(void *owner, const char *type) {
  constexpr Op op = Op::outlet_new;
  return operation(
      op, static_cast<t_outlet *>(nullptr),
      [&](State &s) -> t_outlet * {
        patchbay::Instance *x = patchbay::find_instance(s, op, owner);
        if (x == nullptr) return nullptr;
        t_symbol *message = type != nullptr ? runtime::intern(type) : nullptr;
        auto *outlet = s.ledger.make<t_outlet>(Kind::outlet, op, t_outlet{message, {}});
        s.ledger.owned_by_host(outlet);
        x->outlets.insert(x->outlets.begin(), outlet);
        return outlet;
      },
      type);
}

t_result outlet_anything(t_outlet *outlet, t_symbol *message, t_long argc, const t_atom *argv) {
  constexpr Op op = Op::outlet_anything;
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        const auto *found = patchbay::find<t_outlet>(s, op, Kind::outlet, outlet);
        if (found == nullptr || message == nullptr) return RESULT_FAILED;
        if (found->type != nullptr && found->type != message) {
          report(s, "outlet_anything was given '" + as_text(message) + "' for an outlet of '" +
                        as_text(found->type) + "'");
          return RESULT_FAILED;
        }
        if (found->listeners.empty()) return RESULT_OK;
        const patchbay::Values arguments = patchbay::from_atoms(argc, argv);
        // A listener may free the box, and the outlet with it.
        const auto listeners = found->listeners;
        for (const patchbay::Listener &listener : listeners) {
          patchbay::call_out(s, "a listener", [&] { listener(message->name, arguments); });
        }
        return RESULT_OK;
      },
      message, argc);
}
