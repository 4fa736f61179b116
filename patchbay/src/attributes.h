// Attributes: what a class says of the settings of its instances.
#ifndef PATCHBAY_ATTRIBUTES_H
#define PATCHBAY_ATTRIBUTES_H

#include <optional>

#include "brontal/attribute.h"
#include "classes.h"
#include "properties.h"

struct t_attr {
  t_symbol *name;
  t_symbol *type;
  t_long offset;
  t_long maximum;                      // how many values there is room for
  std::optional<t_long> count_offset;  // where the number of values lies
  std::optional<double> lowest = {};
  std::optional<double> highest = {};
  t_attr_setter setter = nullptr;
  PropertyList properties = {};
};

namespace patchbay {

/** @return the class's attribute of that name, or null. */
t_attr *find_attribute(const t_class &c, const t_symbol *name);

}  // namespace patchbay

#endif
