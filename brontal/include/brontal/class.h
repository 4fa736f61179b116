/**
 * Classes: what kinds of boxes a module brings, and which messages they take.
 *
 * The host loads a module, calls its `ext_main` once, and may unload it when
 * no instance is left. The classes that `ext_main` registered go with it.
 */
#ifndef BRONTAL_CLASS_H
#define BRONTAL_CLASS_H

#include "atom.h"
#include "hashtab.h"
#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

/** How the arguments of a constructor or a message reach its function. */
typedef enum t_argspec {
  ARGS_NONE = 0, /**< `void (*)(void *x)`; a user who sends arguments with the
                      message is refused */
  ARGS_VARIABLE, /**< constructor: `t_constructor`; message: `t_list_handler` */
  ARGS_PRIVATE   /**< only the host calls it, through the signature that is
                      listed below for the message; a user who sends the
                      message is refused */
} t_argspec;

/**
 * Makes an instance. It starts with `object_alloc`, and hands the box's
 * arguments to `attr_args_process` when it wants attributes set from them.
 * @param name        the class's name as the user typed it
 * @param argc, argv  what followed it in the box; valid during the call
 * @return the instance, or null when there can be none
 */
typedef void *(*t_constructor)(t_symbol *name, t_long argc, t_atom *argv);

/** Releases what an instance owns; its memory goes afterwards. */
typedef void (*t_destructor)(void *x);

/** Builds a menu for the class; no class has one yet, so it is null. */
typedef void (*t_menu_function)(void *menu);

/** A message whose arguments are any atoms. */
typedef void (*t_list_handler)(void *x, t_symbol *message, t_long argc, t_atom *argv);

/** "dblclick": the user double-clicked the box. */
typedef void (*t_dblclick_handler)(void *x);

/** The size of the text buffer of `t_assist_handler`, the zero byte included. */
#define BRONTAL_ASSIST_SIZE 512

/** What the `io` of "assist" means. */
enum { ASSIST_INLET = 1, ASSIST_OUTLET = 2 };

/**
 * "assist": the pointer rests on an inlet or an outlet.
 * @param box    the box in the patcher; unused by most
 * @param io     ASSIST_INLET or ASSIST_OUTLET
 * @param index  from 0
 * @param text   BRONTAL_ASSIST_SIZE bytes, holding an empty text, to write to
 */
typedef void (*t_assist_handler)(void *x, void *box, t_long io, t_long index, char *text);

/**
 * "dsp64": audio is being switched on, or its sample rate has changed. Sent to
 * instances of classes that went through `class_dspinit`.
 * @param dsp            the signal chain being built
 * @param count          for each signal inlet and outlet, whether it is connected
 * @param samplerate     in Hz
 * @param maxvectorsize  in samples
 */
typedef void (*t_dsp64_handler)(void *x, void *dsp, short *count, double samplerate,
                                t_long maxvectorsize, t_long flags);

/**
 * "notify": see notification.h.
 * @return 0
 */
typedef t_long (*t_notify_handler)(void *x, t_symbol *s, t_symbol *message, void *sender,
                                   void *data);

/**
 * Makes a class. [load]
 * @param name         as the user types it in a box
 * @param constructor  makes an instance
 * @param destructor   may be null
 * @param size         of an instance, in bytes, its header included
 * @param menu         may be null
 * @param args         ARGS_VARIABLE, the only form of a constructor
 * @param flags        0
 * @return the class, owned by the host from the start; null on failure
 */
BRONTAL_API t_class *class_new(const char *name, t_constructor constructor, t_destructor destructor,
                               t_long size, t_menu_function menu, t_argspec args, t_long flags);

/**
 * Adds a message. [load]
 * @param method  its function, of the signature that `args` asks for
 * @param name    the message
 */
BRONTAL_API t_result class_addmethod(t_class *c, t_method method, const char *name, t_argspec args);

/**
 * Makes the class signal-capable: its instances begin with a
 * `t_signal_object`, receive "dsp64", and inherit the message "signal", which
 * then stands in the class's table "methods". [load]
 */
BRONTAL_API t_result class_dspinit(t_class *c);

/**
 * Finds one of the tables that the host keeps beside a class. [load]
 * @param table  "methods": each message by name, as an object that takes
 *               properties
 * @return the table, owned by the class; null when there is none of that name
 */
BRONTAL_API t_hashtab *class_extra_lookup(t_class *c, t_symbol *table);

/**
 * Opens the class to users, who may make boxes of it from then on; one that was
 * not registered cannot be used, and goes with its module. [load]
 * @param name_space  `common_symbols->box` for classes of boxes
 * @return RESULT_FAILED when the name is taken there
 */
BRONTAL_API t_result class_register(t_symbol *name_space, t_class *c);

/**
 * The start function of a module, called once by the host after loading it.
 */
BRONTAL_EXPORT void ext_main(void);

BRONTAL_END

#endif
