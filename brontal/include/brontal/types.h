/**
 * The types that every other header of the host interface builds on.
 *
 * Conventions of the whole interface, stated once:
 *
 * - Every operation runs on the host's main thread, from inside a call that
 *   the host made into the module. Tags at the functions narrow this down:
 *   [load] only inside `ext_main`; [main] whenever the module has control.
 * - No exception may leave a function that the host calls, and none leaves a
 *   host operation.
 * - A null pointer in the place of an object, a class, an attribute, an atom, a
 *   symbol, a dictionary, an outlet or a task is accepted everywhere: the operation
 *   then does nothing and yields its failure result. A module may therefore
 *   carry on after a failed creation.
 * - Text passed in is read during the call and never kept.
 */
#ifndef BRONTAL_TYPES_H
#define BRONTAL_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define BRONTAL_BEGIN extern "C" {
#define BRONTAL_END }
#else
#define BRONTAL_BEGIN
#define BRONTAL_END
#endif

/** Marks what the host provides and what a module hands to it. */
#if defined(_WIN32)
#define BRONTAL_API
#define BRONTAL_EXPORT __declspec(dllexport)
#else
#define BRONTAL_API __attribute__((visibility("default")))
#define BRONTAL_EXPORT __attribute__((visibility("default")))
#endif

/** Lets the compiler check a printf-like call; positions count from 1. */
#if defined(__GNUC__)
#define BRONTAL_PRINTF(format_at, arguments_at) \
  __attribute__((format(printf, format_at, arguments_at)))
#else
#define BRONTAL_PRINTF(format_at, arguments_at)
#endif

BRONTAL_BEGIN

/** The host's integer: what a "long" attribute holds and what counts are. */
typedef int64_t t_long;

/** What an operation that can fail reports. */
typedef enum t_result {
  RESULT_OK = 0,    /**< it was done */
  RESULT_FAILED = 1 /**< it was not done, and nothing has changed */
} t_result;

/**
 * A function of any signature. The place that takes one names the signature
 * through which the host will call it; a module casts to `t_method` to hand
 * the function over, the host casts back before it calls.
 */
typedef void (*t_method)(void);

/** A registered class; made and read by the host alone. */
typedef struct t_class t_class;

BRONTAL_END

#endif
