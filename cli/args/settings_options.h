// The options that describe the filter, the same for all subcommands: one for each attribute of the
// box, and --from.
#ifndef CLI_ARGS_SETTINGS_OPTIONS_H
#define CLI_ARGS_SETTINGS_OPTIONS_H

#include <optional>
#include <string>

#include "args/arguments.h"
#include "args/option.h"
#include "designer/settings.h"

namespace cli {

/** @return one option for each attribute, in the order in which the module declares them. They are
 *          listed here so that the help needs no module; a test compares them with what it
 *          declares. */
Options settings_options();

/** @return the attribute that such an option sets: "passband_ripple" for --passband-ripple. */
std::string attribute_of(const Option &option);

/**
 * @return what was asked for, in the order of the attributes: the settings of the design that
 *         --from names, and those given beside it instead of its own
 * Raises designer::Refusal when the file cannot be read or is not a saved design, or it has a
 * setting that is not an attribute.
 */
designer::Settings requested_settings(const Arguments &arguments);

/** @return the same, with the file of a subcommand whose --from means something else as well; none
 *          if there is none. */
designer::Settings requested_settings(const Arguments &arguments,
                                      const std::optional<std::string> &file);

/** @return the settings that were typed themselves, not taken from a file. */
designer::Settings typed_settings(const Arguments &arguments);

}  // namespace cli

#endif
