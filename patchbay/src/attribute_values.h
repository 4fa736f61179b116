// The values that an instance's attributes hold.
#ifndef PATCHBAY_ATTRIBUTE_VALUES_H
#define PATCHBAY_ATTRIBUTE_VALUES_H

#include "attributes.h"
#include "instances.h"
#include "patchbay/value.h"

namespace patchbay {

/** Converts, clips and stores values, and sends the notice of the change. The instance may be gone
 *  afterwards. Raises Error if there are no values, or one does not fit the type. */
void set_attribute(State &s, Instance &x, t_attr &attr, const Values &values);

/** @return the values that are stored; a symbol that was never set is left out. */
Values get_attribute(const Instance &x, const t_attr &attr);

/** Sets what `attribute: value ...` asks for, and posts what cannot be set. */
void process_arguments(State &s, Instance &x, const Values &arguments);

}  // namespace patchbay

#endif
