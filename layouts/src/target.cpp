#include "layouts/target.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "targets.h"

namespace layouts {

std::span<const Target> targets() {
#define TARGET(name) name##_target,
  static const std::array table{
#include "targets.inc"
  };
#undef TARGET
  return table;
}

const Target &target_named(std::string_view name) {
  const std::span<const Target> all = targets();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const Target &target) { return target.name == name; });
  if (found != all.end()) return *found;
  std::string names;
  for (const Target &target : all)
    names += fmt::format("{}{}", names.empty() ? "" : ", ", target.name);
  throw designer::Refusal(fmt::format("--for cannot be '{}'; it is one of {}", name, names));
}

}  // namespace layouts
