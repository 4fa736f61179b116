// What an option is: one entry of the tables from which parsing, help, manual page and completion
// are made.
#ifndef CLI_ARGS_OPTION_H
#define CLI_ARGS_OPTION_H

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/** What the numbers of an option are in, which may be typed behind them. */
enum class Unit { none, hertz, decibels };

/** An option of a subcommand. Tables point to options, and the option itself is the key to what was
 *  given to it: each exists once. */
struct Option {
  std::string_view names; /**< "--order", "-o,--output", or "--samplerate,--fs": the first long one
                               is its own, others are second names */
  std::string_view value = {}; /**< what its value is called, such as "FILE"; empty for a switch */
  std::string_view help;       /**< what it does, its choices, range and unit */
  std::size_t most = 1;        /**< how many values it takes; those of a switch are not counted */
  std::span<const std::string_view> choices =
      {};                 /**< the values it takes; empty if it takes any other */
  Unit unit = Unit::none; /**< of its numbers */

  /** As many values as are given. */
  static constexpr std::size_t any_number = static_cast<std::size_t>(-1);

  bool is_switch() const { return value.empty(); }

  /** @return its own long name: "--output". */
  std::string_view name() const {
    const std::string_view long_names = names.substr(names.find("--"));
    return long_names.substr(0, long_names.find(','));
  }

  /** @return all of its names. */
  std::vector<std::string_view> all_names() const;
};

/** A table of options, in the order of the help. */
using Options = std::span<const Option *const>;

/**
 * An option as it was typed, by its name in the table: --passband_ripple is --passband-ripple, and
 * --pass is that, too, where no other option begins so. A value after = stays.
 * @return what is no such option as it is
 * Raises designer::Refusal where several options begin so.
 */
std::string in_full(const std::string &typed, Options options);

}  // namespace cli

#endif
