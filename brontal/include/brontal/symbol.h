/**
 * Symbols: interned strings. Two symbols with the same text are the same
 * pointer, so they are compared by identity. They live as long as the host
 * process and are never freed by a module.
 */
#ifndef BRONTAL_SYMBOL_H
#define BRONTAL_SYMBOL_H

#include "types.h"

BRONTAL_BEGIN

/** An interned string. */
typedef struct t_symbol {
  const char *name; /**< the text, UTF-8, ended by a zero byte; read only */
} t_symbol;

/**
 * Interns a text. [main]
 * @param text  ended by a zero byte; null counts as the empty text
 * @return the symbol with this text; null only when memory is exhausted
 */
BRONTAL_API t_symbol *gensym(const char *text);

/**
 * Interns the user's translation of a text. [main]
 * @param text  in English
 * @return the symbol of the translation, or of `text` where there is none
 */
BRONTAL_API t_symbol *gensym_tr(const char *text);

/**
 * Translates a text for the user. [main]
 * @param text  in English
 * @return the translation, or the interned `text` where there is none; owned
 *         by the host and valid as long as the process; null when `gensym_tr`
 *         would yield null
 */
BRONTAL_API const char *str_tr(const char *text);

/**
 * Makes a symbol whose text no symbol had before. [main]
 * @return the new symbol; null only when memory is exhausted
 */
BRONTAL_API t_symbol *symbol_unique(void);

/** Symbols that host and modules agree on. */
typedef struct t_common_symbols {
  t_symbol *box;           /**< "box": the namespace of box classes */
  t_symbol *name;          /**< "name" */
  t_symbol *getname;       /**< "getname": asks an attribute for its name */
  t_symbol *edit;          /**< "edit": asks an object to open its editor */
  t_symbol *attr_modified; /**< "attr_modified": the notice after a change of
                                an attribute */
} t_common_symbols;

/**
 * The host's table of the common symbols, never null. Its symbols are null
 * before the first `common_symbols_init`. Read only.
 */
BRONTAL_API extern const t_common_symbols *common_symbols;

/** Fills the table of `common_symbols`. Further calls change nothing. [load] */
BRONTAL_API void common_symbols_init(void);

BRONTAL_END

#endif
