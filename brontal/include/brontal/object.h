/**
 * Objects: what the host recognises by its address. Instances of a class,
 * attributes, dictionaries, atom arrays and the entries of a class's method
 * table are objects; all of them take messages through `object_method_imp`.
 */
#ifndef BRONTAL_OBJECT_H
#define BRONTAL_OBJECT_H

#include "atom.h"
#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

/**
 * The header of an instance: its first member, so that a pointer to the
 * instance is a pointer to it. Filled by `object_alloc`; the module leaves it
 * alone.
 */
typedef struct t_object {
  void *host[2];
} t_object;

/** The header for instances of a class set up with `class_dspinit`. */
typedef struct t_signal_object {
  t_object object;
  void *signal[2];
} t_signal_object;

/**
 * Allocates an instance; called by a class's constructor. [main]
 * @return an instance of the size given to `class_new`, zero-filled except for
 *         its header; null on failure. The constructor returns it to the host,
 *         which owns it from then on and destroys it with `object_free`
 */
BRONTAL_API void *object_alloc(t_class *c);

/**
 * Makes an instance of a registered class. [main]
 * @param name_space  where the class was registered
 * @param class_name  which class
 * @param argc, argv  the arguments for its constructor
 * @return the instance, owned by the caller and released with `object_free`;
 *         null when there is no such class or its constructor failed
 */
BRONTAL_API void *object_new_typed(t_symbol *name_space, t_symbol *class_name, t_long argc,
                                   const t_atom *argv);

/**
 * Releases an object that the caller owns. [main] An instance: its class's
 * destructor runs, then its memory, outlets and attribute values go. A
 * dictionary: it leaves its name and its atom arrays are released. An atom
 * array that no dictionary took over: it is released.
 */
BRONTAL_API t_result object_free(void *object);

/**
 * Sends a message whose arguments are not atoms. [main] The object and the
 * message fix the arguments:
 *
 * | object     | message                   | arguments             | yields         |
 * |------------|---------------------------|-----------------------|----------------|
 * | attribute  | `common_symbols->getname` | none                  | its name       |
 * | attribute  | "setmethod"               | `t_symbol *which`,    | nothing of use |
 * |            |                           | `t_method m`          |                |
 * | atom array | "setatoms64"              | `t_long count`,       | nothing of use |
 * |            |                           | `const t_atom *atoms` |                |
 * | instance   | one without arguments     | none                  | the instance   |
 *
 * "setmethod": `which` is "set" or "get". The "set" method has the signature
 * `t_attr_setter` and replaces the storing of a value; null restores the
 * default. Reading always yields the stored value, so "get" takes null only.
 *
 * "setatoms64": replaces what the array holds by copies of the atoms, which may
 * be null when the count is 0. A host that cannot leaves the array as it was.
 *
 * @return as in the table; null when the object does not understand the
 *         message or failed to carry it out. "nothing of use" may be null or
 *         anything else whether it was carried out or not: some hosts give such
 *         a message no result, so no module may look at it
 */
BRONTAL_API void *object_method_imp(void *object, t_symbol *message, ...);

/**
 * Posts an error, in the console, against an object. [main]
 * @param format  as for printf
 */
BRONTAL_API void object_error(void *object, const char *format, ...) BRONTAL_PRINTF(2, 3);

/**
 * Gives an object a property. [main]
 * @param property  its name
 * @param type      "symbol", "long", "float64", or "atom" for a list of any
 * @param text      its value as written in a box
 */
BRONTAL_API t_result object_addattr_parse(void *object, const char *property, t_symbol *type,
                                          const char *text);

BRONTAL_END

#endif
