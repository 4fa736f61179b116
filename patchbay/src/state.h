// The state of a host, which ties its parts together.
#ifndef PATCHBAY_STATE_H
#define PATCHBAY_STATE_H

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "brontal/class.h"
#include "brontal/dictionary.h"
#include "brontal/qelem.h"
#include "brontal/symbol.h"
#include "claim.h"
#include "faults.h"
#include "ledger.h"
#include "patchbay/host.h"
#include "trace.h"

namespace patchbay {

struct Instance;

/** What brought classes. */
struct Module {
  void *key;       /**< the library, or the `ext_main` of a module that is linked in */
  bool is_library; /**< to be closed in the end */

  bool operator==(const Module &) const = default;
};

struct State {
  State(std::ostream &out_, Checking checking) : claim(*this), out(out_), ledger(checking) {}

  Claim claim;
  std::ostream &out;
  Ledger ledger;
  Trace trace;
  Faults faults;
  std::vector<std::string> violations;
  std::vector<std::string> leaked;  // when the host was closed
  std::vector<Post> posts;

  std::vector<Module> modules;
  void *loading = nullptr;  // the key of the one whose ext_main is running
  std::vector<t_class *> all_classes;
  std::map<std::pair<t_symbol *, t_symbol *>, t_class *> classes;  // by namespace and name

  std::vector<Instance *> instances;  // all that are alive
  std::vector<Box> boxes;             // those that a user made
  int notice_depth = 0;
  bool notices_cut = false;  // until the outermost notice is done
  std::map<t_symbol *, t_dictionary *> dictionaries;
  std::deque<t_qelem *> queue;
  std::uint64_t last_ticket = 0;
  double samplerate = 48000.0;
  bool audio = false;
};

}  // namespace patchbay

#endif
