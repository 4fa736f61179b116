// The records behind the types that brontal/ leaves opaque, and the state of
// the host that ties them together.
#ifndef PATCHBAY_STATE_H
#define PATCHBAY_STATE_H

#include <deque>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "brontal/brontal.h"
#include "claim.h"
#include "ledger.h"
#include "operations.h"
#include "patchbay/host.h"

/** Properties in the order in which they were given. */
using PropertyList = std::vector<std::pair<std::string, patchbay::Values>>;

/** A message that a class takes. */
struct Method {
  t_symbol *name;
  t_method function;
  t_argspec args;
  PropertyList properties;
};

struct t_hashtab {
  t_class *owner;
};

struct t_attr {
  t_symbol *name;
  t_symbol *type;
  t_long offset;
  t_long maximum;                      // how many values there is room for
  std::optional<t_long> count_offset;  // where the number of values lies
  std::optional<double> lowest = {};
  std::optional<double> highest = {};
  t_attr_setter setter = nullptr;
  PropertyList properties = {};
};

struct t_class {
  t_symbol *name = nullptr;
  t_constructor constructor = nullptr;
  t_destructor destructor = nullptr;
  t_long size = 0;
  void *module = nullptr;          // the library that brought it; null for the host's own
  t_symbol *name_space = nullptr;  // set when registered
  bool takes_signals = false;
  t_hashtab *method_table = nullptr;
  std::vector<Method *> methods = {};
  std::vector<t_attr *> attributes = {};
};

struct t_outlet {
  t_symbol *type;  // null for any
  std::vector<patchbay::Listener> listeners;
};

struct t_qelem {
  void *owner;
  t_task task;
  std::uint64_t ticket = 0;  // grows with each setting
};

struct t_atomarray {
  std::vector<t_atom> atoms;
};

struct t_dictionary {
  using Stored = std::variant<t_symbol *, double, t_atomarray *>;
  t_symbol *name = nullptr;  // under which it is registered
  std::vector<std::pair<t_symbol *, Stored>> entries;
};

namespace patchbay {

/** Who is told of an instance's changes. */
struct Client {
  void *instance;
  t_symbol *name_space;  // under which it attached
};

/** What the host knows of an instance beside the module's record. */
struct Instance : std::enable_shared_from_this<Instance> {
  Instance(t_class *type_, void *memory_) : type(type_), memory(memory_) {}

  t_class *type;
  void *memory;
  std::set<const t_attr *> disabled;
  std::vector<Client> clients;
  std::vector<t_outlet *> outlets;
  bool dying = false;  // its destructor is running
  bool freed = false;  // what follows a call into a module must ask
};

struct State {
  explicit State(std::ostream &out_) : claim(*this), out(out_) {}

  Claim claim;
  std::ostream &out;
  Ledger ledger;
  Trace trace;
  Faults faults;
  std::vector<std::string> violations;
  std::vector<std::string> leaked;  // when the host was closed
  std::vector<Post> posts;

  std::vector<void *> modules;  // loaded libraries
  void *loading = nullptr;      // the one whose ext_main is running
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

// --- finding things; each reports a misuse of the address and yields null

/** @return a record of a kind, of which `op` was given the address. */
template <typename Record>
Record *find(State &state, Op op, Kind kind, const void *address) {
  std::string problem;
  const Ledger::Entry *entry = state.ledger.find(address, kind, problem);
  if (!problem.empty()) report(state, std::string(name_of(op)) + " was given " + problem);
  return entry == nullptr ? nullptr : static_cast<Record *>(entry->record.get());
}

inline Instance *find_instance(State &s, Op op, const void *x) {
  return find<Instance>(s, op, Kind::instance, x);
}
inline t_class *find_class(State &s, Op op, const t_class *c) {
  return find<t_class>(s, op, Kind::box_class, c);
}

/** @return whether ext_main is running; reports the operation when it is not. */
inline bool is_loading(State &state, Op op) {
  if (state.loading != nullptr) return true;
  report(state, std::string(name_of(op)) + " was called outside ext_main");
  return false;
}

/** Finds a class that is being built. */
inline t_class *class_to_build(State &state, Op op, const t_class *c) {
  return is_loading(state, op) ? find_class(state, op, c) : nullptr;
}

// --- classes.cpp
Method *find_method(const t_class &c, const t_symbol *name);
/** The function of a message that only the host sends; null when there is none. */
t_method find_private(const t_class &c, const char *message);
void add_method(State &s, Op op, t_class &c, Method method);
t_class *make_class(State &s, t_class description);
void destroy_class(State &s, t_class *c);

// --- viewer.cpp
void register_viewer(State &s);

// --- modules.cpp
void load_module(State &s, const std::filesystem::path &path);
void unload_modules(State &s);

// --- attributes.cpp
t_attr *find_attribute(const t_class &c, const t_symbol *name);

// --- attribute_values.cpp: the values of attributes. Both raise Error.
void set_attribute(State &s, Instance &x, t_attr &attr, const Values &values);
Values get_attribute(const Instance &x, const t_attr &attr);
void process_arguments(State &s, Instance &x, const Values &arguments);

/** The values of a property, from text. Raises Error when it does not fit the type. */
Values parse_property(const t_symbol *type, const std::string &text);

// --- objects.cpp
/**
 * Calls what is not the host's own. An exception that comes out of it is a
 * violation.
 * @return whether none did
 */
template <typename Function>
bool call_out(State &state, const std::string &what, Function &&function) {
  try {
    function();
    return true;
  } catch (...) {
    report(state, "an exception came out of '" + what + "'");
    return false;
  }
}

/** The same for a message to a module. */
template <typename Function>
bool call_module(State &state, const t_symbol *message, Function &&function) {
  return call_out(state, as_text(message), std::forward<Function>(function));
}
void *allocate_instance(State &s, t_class &c, Op op);
void *new_instance(State &s, t_class &c, const Values &arguments);
bool destroy(State &s, void *object, Op by);
/** Takes an instance off the books whose module is going: nothing of it is called. */
void forget_instance(State &s, Instance &x, Op by);

// --- notifications.cpp
void send_notice(State &s, Instance &x, t_symbol *notice, void *data);
void forget_client(State &s, void *client);

// --- dictionaries.cpp
void destroy_dictionary(State &s, t_dictionary *d, Op by);
Dictionary contents(const t_dictionary &d);

void print(std::ostream &out, const Dictionary &dictionary);

// --- audio.cpp
void send_dsp64(State &s, const Instance &x);

// --- values.cpp
/** @return a word's number, or the word itself where it is none. */
Value parse_word(const std::string &word);
t_atom to_atom(const Value &value);
Value from_atom(const t_atom &atom);
std::vector<t_atom> to_atoms(const Values &values);
Values from_atoms(t_long argc, const t_atom *argv);

}  // namespace patchbay

#endif
