// Instances: what the host knows of an object of a class beside the module's record.
#ifndef PATCHBAY_INSTANCES_H
#define PATCHBAY_INSTANCES_H

#include <memory>
#include <set>
#include <vector>

#include "attributes.h"
#include "classes.h"
#include "notifications.h"
#include "operations.h"
#include "outlets.h"
#include "patchbay/value.h"

namespace patchbay {

struct Instance : std::enable_shared_from_this<Instance> {
  Instance(t_class *type_, void *memory_) : type(type_), memory(memory_) {}

  t_class *type;
  void *memory;  // the module's record
  std::set<const t_attr *> disabled;
  std::vector<Client> clients;
  std::vector<t_outlet *> outlets;
  bool dying = false;  // its destructor is running
  bool freed = false;  // to be checked after each call into a module
};

/** @return the instance whose record is at this address; null for any other address,
 *  which is reported. */
Instance *find_instance(State &s, Op op, const void *x);

/** @return a zero-filled record of a class with its instance, or null without memory. */
void *allocate_instance(State &s, t_class &c, Op op);

/** Runs a class's constructor. @return the record of what it made, or null. */
void *new_instance(State &s, t_class &c, const Values &arguments);

/** Runs the destructor and releases the instance. */
void destroy_instance(State &s, Instance &x, Op by);

/** Strikes out an instance whose module is being unloaded: none of its functions is called. */
void forget_instance(State &s, Instance &x, Op by);

}  // namespace patchbay

#endif
