// Outlets: where messages leave an instance.
#ifndef PATCHBAY_OUTLETS_H
#define PATCHBAY_OUTLETS_H

#include <vector>

#include "brontal/outlet.h"
#include "patchbay/host.h"

struct t_outlet {
  t_symbol *type;  // null for any
  std::vector<patchbay::Listener> listeners;
};

#endif
