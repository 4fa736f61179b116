/**
 * Attributes: the named settings of an instance, stored in its record.
 *
 * Setting one goes through these stages: the values are converted to the
 * attribute's type (numbers to numbers, fractions of a "long" cut off towards
 * zero, numbers to symbols by their text; a text that is not a number is
 * refused where a number belongs, and an attribute without room for all values
 * takes the first ones), clipped by its filter, stored (or handed to its "set"
 * method), and then the notice `common_symbols->attr_modified` goes to all
 * clients of the instance, with the attribute as its data. Setting from
 * within such a notice is allowed: the nested notice is delivered at once.
 *
 * The types are named by symbols: "symbol" (a `t_symbol *` in the record),
 * "long" (`t_long`) and "float64" (`double`).
 */
#ifndef BRONTAL_ATTRIBUTE_H
#define BRONTAL_ATTRIBUTE_H

#include "atom.h"
#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

/** An attribute of a class: an object, see object.h for its messages. */
typedef struct t_attr t_attr;

/**
 * Replaces the storing of a value.
 * @param x           the instance
 * @param argc, argv  the values, already converted and clipped
 * @return what the setting reports
 */
typedef t_result (*t_attr_setter)(void *x, t_attr *attr, t_long argc, t_atom *argv);

/**
 * Describes an attribute of one value. [load]
 * @param name    as the user types it
 * @param type    see above
 * @param offset  where the value lies in the record, in bytes
 * @return the attribute, owned by the caller until `class_addattr`; null on
 *         failure
 */
BRONTAL_API t_attr *attr_offset_new(const char *name, t_symbol *type, t_long offset);

/**
 * Describes an attribute of several values. [load]
 * @param maximum       how many values there is room for
 * @param count_offset  where the `t_long` lies that holds how many are set
 * @param offset        where the first value lies
 */
BRONTAL_API t_attr *attr_offset_array_new(const char *name, t_symbol *type, t_long maximum,
                                          t_long count_offset, t_long offset);

/**
 * Adds an attribute to a class, which owns it from then on, also when this
 * fails because the class has one of that name. [load]
 */
BRONTAL_API t_result class_addattr(t_class *c, t_attr *attr);

/** @return the class's attribute of that name, owned by the class, or null. [load] */
BRONTAL_API t_attr *class_attr_get(t_class *c, t_symbol *name);

/**
 * Limits what can be stored. [load]
 * @param usemin, usemax  whether the bound holds; values beyond it become it
 */
BRONTAL_API t_result attr_addfilter_clip(t_attr *attr, double minimum, double maximum,
                                         t_long usemin, t_long usemax);

/**
 * Gives an attribute of the class a property, such as "label", "style" or
 * "category". [load]
 * @param type    as for `object_addattr_parse`
 * @param format  one letter a value: "s" for a `t_symbol *`, "l" for a
 *                `t_long`, "f" for a `double`; the values follow
 */
BRONTAL_API t_result class_attr_addattr_format(t_class *c, const char *attr, const char *property,
                                               t_symbol *type, const char *format, ...);

/** The same with the value as text, as for `object_addattr_parse`. [load] */
BRONTAL_API t_result class_attr_addattr_parse(t_class *c, const char *attr, const char *property,
                                              t_symbol *type, const char *text);

/**
 * Sets the attributes that follow the class name in a box, each as a symbol
 * that ends in a colon (`order:`) followed by its values. [main] What cannot be
 * set is posted against the instance, and the rest is still set.
 */
BRONTAL_API void attr_args_process(void *x, t_long argc, const t_atom *argv);

/** Sets an attribute to one symbol. [main] */
BRONTAL_API t_result object_attr_setsym(void *x, t_symbol *attr, t_symbol *value);

/**
 * Sets an attribute to several numbers. [main]
 * @param values  copied first, so that they may be the attribute's own storage
 */
BRONTAL_API t_result object_attr_setdouble_array(void *x, t_symbol *attr, t_long count,
                                                 const double *values);

/**
 * Shows an attribute of one instance as out of use, or in use again. [main]
 * Its value can still be set and read. No notice is sent.
 */
BRONTAL_API t_result object_attr_setdisabled(void *x, t_symbol *attr, t_long disabled);

BRONTAL_END

#endif
