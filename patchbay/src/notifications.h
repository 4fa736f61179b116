// Notices: who is notified of an instance's changes.
#ifndef PATCHBAY_NOTIFICATIONS_H
#define PATCHBAY_NOTIFICATIONS_H

#include "brontal/symbol.h"

namespace patchbay {

struct State;
struct Instance;

/** Who is notified of an instance's changes. */
struct Client {
  void *instance;
  t_symbol *name_space;  // under which it attached
};

/** Sends a notice about an instance to its clients. The instance may be gone afterwards. */
void send_notice(State &s, Instance &x, t_symbol *notice, void *data);

/** Detaches a client, given by its record, from all instances. */
void forget_client(State &s, void *client);

}  // namespace patchbay

#endif
