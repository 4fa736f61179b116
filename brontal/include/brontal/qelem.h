/**
 * Deferred tasks: functions that the host runs later, on its low-priority
 * queue, outside any handler. Setting a task that is already set changes
 * nothing, so a burst of requests runs it once; unsetting it first moves it to
 * the end of the queue.
 */
#ifndef BRONTAL_QELEM_H
#define BRONTAL_QELEM_H

#include "types.h"

BRONTAL_BEGIN

typedef struct t_qelem t_qelem;

/** What a deferred task runs. */
typedef void (*t_task)(void *owner);

/**
 * Makes a deferred task, which is not set yet. [main]
 * @param owner  handed to the function
 * @return the task, owned by the caller, released with `qelem_free`; null on
 *         failure
 */
BRONTAL_API t_qelem *qelem_new(void *owner, t_task task);

/** Asks for one run. [main] */
BRONTAL_API void qelem_set(t_qelem *task);

/** Takes the request back. [main] */
BRONTAL_API void qelem_unset(t_qelem *task);

/** Releases a task; it will not run again. [main] */
BRONTAL_API void qelem_free(t_qelem *task);

BRONTAL_END

#endif
