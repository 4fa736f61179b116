#include "notifications.h"

#include <algorithm>

#include "brontal/notification.h"
#include "call_out.h"
#include "gate.h"
#include "instances.h"
#include "state.h"
#include "violations.h"
#include "words.h"

using patchbay::Instance;
using patchbay::Op;
using patchbay::State;

namespace patchbay {
namespace {

// A client that answers every notice with a change would never stop.
constexpr int deepest = 100;

bool is_client(const Instance &x, const void *instance) {
  return std::any_of(x.clients.begin(), x.clients.end(),
                     [instance](const Client &client) { return client.instance == instance; });
}

}  // namespace

void send_notice(State &s, Instance &x, t_symbol *notice, void *data) {
  if (s.notices_cut) return;
  if (s.notice_depth == deepest) {
    report(s, "notices were nested more than 100 deep");
    s.notices_cut = true;
    return;
  }
  ++s.notice_depth;
  const auto alive = x.shared_from_this();  // a client's listener may free it
  void *sender = x.memory;
  const auto clients = x.clients;
  for (const Client &client : clients) {
    if (!is_client(x, client.instance)) continue;  // freed meanwhile
    const auto *receiver = static_cast<const t_object *>(client.instance);
    const auto *type = static_cast<const t_class *>(receiver->host[0]);
    const auto handler = reinterpret_cast<t_notify_handler>(find_private(*type, words().notify));
    call_module(s, notice,
                [&] { handler(client.instance, client.name_space, notice, sender, data); });
  }
  if (--s.notice_depth == 0) s.notices_cut = false;
}

void forget_client(State &s, void *client) {
  for (Instance *x : s.instances)
    std::erase_if(x->clients, [client](const Client &other) { return other.instance == client; });
}

}  // namespace patchbay

t_result object_attach_byptr_register(void *client, void *object, t_symbol *name_space) {
  constexpr Op op = Op::object_attach_byptr_register;
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        const Instance *receiver = patchbay::find_instance(s, op, client);
        Instance *sender = patchbay::find_instance(s, op, object);
        if (receiver == nullptr || sender == nullptr ||
            patchbay::find_private(*receiver->type, patchbay::words().notify) == nullptr)
          return RESULT_FAILED;
        if (!patchbay::is_client(*sender, client)) sender->clients.push_back({client, name_space});
        return RESULT_OK;
      },
      name_space);
}
