// What an option is: one entry of the tables from which parsing, help, manual page and completion
// are made.
#ifndef CLI_ARGS_OPTION_H
#define CLI_ARGS_OPTION_H

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace cli {

/** An option of a subcommand. Tables point to options, and the option itself is the key to what was
 *  given to it: each exists once. */
struct Option {
  std::string_view names;      /**< "--order", or "-o,--output" */
  std::string_view value = {}; /**< what its value is called, such as "FILE"; empty for a switch */
  std::string_view help;       /**< what it does, its choices, range and unit */
  std::size_t most = 1;        /**< how many values it takes; those of a switch are not counted */
  std::span<const std::string_view> choices =
      {}; /**< the values it takes; empty if it takes any other */

  /** As many values as are given. */
  static constexpr std::size_t any_number = static_cast<std::size_t>(-1);

  bool is_switch() const { return value.empty(); }

  /** @return its long name: "--output". */
  std::string_view name() const { return names.substr(names.find("--")); }
};

/** A table of options, in the order of the help. */
using Options = std::span<const Option *const>;

}  // namespace cli

#endif
