/**
 * Notifications: objects notify their clients of what happens to them.
 *
 * A client is an instance whose class has the message "notify"
 * (`t_notify_handler`). Its arguments: `s`, the namespace under which the
 * client attached; `message`, the notice; `sender`, the object that it is
 * about; `data`, which depends on the notice.
 *
 * | notice                          | when                               | data           |
 * |---------------------------------|------------------------------------|----------------|
 * | `common_symbols->attr_modified` | after an attribute was set         | the `t_attr *` |
 * | "editor_closed"                 | the editor that the object opened  | null           |
 * |                                 | for the client has closed          |                |
 *
 * Inside a notification the client may set attributes (nested notices are
 * delivered at once) and set deferred tasks; it must not free the sender.
 */
#ifndef BRONTAL_NOTIFICATION_H
#define BRONTAL_NOTIFICATION_H

#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

/**
 * Makes one instance the client of another; both may be the same. [main] The
 * tie ends when either is freed. Attaching twice changes nothing.
 * @param client      receives the notices
 * @param object      is the one they are about
 * @param name_space  handed to the client with each notice
 */
BRONTAL_API t_result object_attach_byptr_register(void *client, void *object, t_symbol *name_space);

BRONTAL_END

#endif
