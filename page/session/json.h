// What the C++ side holds, as JSON.
#ifndef PAGE_SESSION_JSON_H
#define PAGE_SESSION_JSON_H

#include "designer/designer.h"
#include "text/json.h"

namespace page {

text::Json json(const designer::Values &values);     /**< a list */
text::Json json(const designer::Settings &settings); /**< lists by name */
text::Json json(const patchbay::AttributeInfo &attribute);

/** @return a list of pairs, so that the order of the keys is kept by whatever reads it. */
text::Json json(const patchbay::Dictionary &dictionary);

}  // namespace page

#endif
