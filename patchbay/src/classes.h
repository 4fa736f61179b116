// Classes and the messages that they take.
#ifndef PATCHBAY_CLASSES_H
#define PATCHBAY_CLASSES_H

#include <vector>

#include "brontal/class.h"
#include "brontal/hashtab.h"
#include "operations.h"
#include "properties.h"

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

struct t_attr;

struct t_class {
  t_symbol *name = nullptr;
  t_constructor constructor = nullptr;
  t_destructor destructor = nullptr;
  t_long size = 0;
  void *module = nullptr;          // the key of what brought it; null for the host's own
  t_symbol *name_space = nullptr;  // set when registered
  bool takes_signals = false;
  t_hashtab *method_table = nullptr;
  std::vector<Method *> methods = {};
  std::vector<t_attr *> attributes = {};
};

namespace patchbay {

struct State;

/** @return the class at this address; null for any other address, which is reported. */
t_class *find_class(State &s, Op op, const t_class *c);

/** The same for an operation that builds a class, which only ext_main may. */
t_class *class_to_build(State &s, Op op, const t_class *c);

/** @return the message of that name, or null. */
Method *find_method(const t_class &c, const t_symbol *name);

/** @return the function of a message that only the host sends, or null. */
t_method find_private(const t_class &c, const t_symbol *message);

/** Adds a message, which the class owns. */
void add_method(State &s, Op op, t_class &c, Method method);

/** Makes a class, which the host owns until `destroy_class`. */
t_class *make_class(State &s, t_class description);

/** Releases a class with its messages and attributes; it is no longer found by its name. */
void destroy_class(State &s, t_class *c);

}  // namespace patchbay

#endif
