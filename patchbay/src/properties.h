// Properties: what a class says of its messages and attributes.
#ifndef PATCHBAY_PROPERTIES_H
#define PATCHBAY_PROPERTIES_H

#include <string>
#include <utility>
#include <vector>

#include "brontal/symbol.h"
#include "patchbay/value.h"

/** Properties in the order in which they were given. */
using PropertyList = std::vector<std::pair<std::string, patchbay::Values>>;

namespace patchbay {

/** @return the values of a property, from text. Raises Error when it does not fit the type. */
Values parse_property(const t_symbol *type, const std::string &text);

}  // namespace patchbay

#endif
