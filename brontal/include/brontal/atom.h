/** Atoms: the values that messages, attributes and atom arrays carry. */
#ifndef BRONTAL_ATOM_H
#define BRONTAL_ATOM_H

#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

/** What an atom holds. */
typedef enum t_atom_type {
  ATOM_NOTHING = 0, /**< nothing; a zero-filled atom is one of these */
  ATOM_LONG,        /**< `value.integer` */
  ATOM_FLOAT,       /**< `value.number` */
  ATOM_SYMBOL       /**< `value.symbol` */
} t_atom_type;

/** One value. It owns nothing: symbols live as long as the process. */
typedef struct t_atom {
  t_atom_type type;
  union {
    t_long integer;
    double number;
    t_symbol *symbol;
  } value;
} t_atom;

/** Makes the atom hold a number. [main] */
BRONTAL_API t_result atom_setfloat(t_atom *atom, double value);

/** Makes the atom hold a symbol. [main] */
BRONTAL_API t_result atom_setsym(t_atom *atom, t_symbol *value);

/**
 * Reads a symbol. [main]
 * @return the symbol that the atom holds; the symbol of the empty text when
 *         it holds anything else or `atom` is null
 */
BRONTAL_API t_symbol *atom_getsym(const t_atom *atom);

BRONTAL_END

#endif
