/**
 * Dictionaries: values under keys, in the order in which they were appended.
 * Appending under a key that is there replaces its value and keeps its place.
 */
#ifndef BRONTAL_DICTIONARY_H
#define BRONTAL_DICTIONARY_H

#include "atomarray.h"
#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

/** A dictionary: an object, released with `object_free`. */
typedef struct t_dictionary t_dictionary;

/** @return a new, empty, nameless dictionary owned by the caller, or null. [main] */
BRONTAL_API t_dictionary *dictionary_new(void);

/** Removes all entries, releasing the atom arrays among them. [main] */
BRONTAL_API t_result dictionary_clear(t_dictionary *d);

/** Appends a symbol. [main] */
BRONTAL_API t_result dictionary_appendsym(t_dictionary *d, t_symbol *key, t_symbol *value);

/** Appends a number. [main] */
BRONTAL_API t_result dictionary_appendfloat(t_dictionary *d, t_symbol *key, double value);

/**
 * Appends an atom array. [main] The dictionary owns it from the call on; when
 * appending fails, the array has been released.
 */
BRONTAL_API t_result dictionary_appendatomarray(t_dictionary *d, t_symbol *key, t_atomarray *value);

/**
 * Registers a dictionary under a name, so that others find it, or moves it to
 * another name when it has one already. [main] It is found by that name until
 * it is freed or moved.
 * @param d     owned by the caller; null asks for a new, empty one
 * @param name  in: the name wanted; out: the name given, which differs when
 *              another dictionary has the wanted one or it is empty
 * @return the registered dictionary, still (or newly) owned by the caller;
 *         null on failure: then `d` has been released and `name` is unchanged
 */
BRONTAL_API t_dictionary *dictobj_register(t_dictionary *d, t_symbol **name);

BRONTAL_END

#endif
