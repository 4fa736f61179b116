// The options that say which response is wanted, and where.
#ifndef CLI_RESPONSE_RESPONSE_OPTIONS_H
#define CLI_RESPONSE_RESPONSE_OPTIONS_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "args/arguments.h"
#include "args/option.h"

namespace cli {

/** Beside its usual meaning it is the lowest frequency; a number is no name of a saved design. */
inline constexpr Option low_or_file_option{
    .names = "--from",
    .value = "HZ|FILE",
    .help =
        "A number: the lowest frequency, in Hz [a thousandth of --to]. A file: take the settings "
        "of a design saved as JSON; settings given beside it take precedence",
    .most = 2};
inline constexpr Option high_option{.names = "--to",
                                    .value = "NUMBER",
                                    .help = "The highest frequency, in Hz [half the sample rate]",
                                    .unit = Unit::hertz};
inline constexpr Option points_option{
    .names = "--points", .value = "NUMBER", .help = "How many frequencies: 2 to 1000000 [200]"};
inline constexpr Option linear_option{
    .names = "--linear", .help = "Equal steps in Hz, not equal ratios; --from may be 0 [off]"};
inline constexpr Option at_option{.names = "--at",
                                  .value = "NUMBER...",
                                  .help = "These frequencies, in Hz, in the place of a range",
                                  .most = Option::any_number,
                                  .unit = Unit::hertz};
inline constexpr Option wrapped_option{
    .names = "--wrapped", .help = "The phase between -180 and 180 degrees, not continuous [off]"};
inline constexpr Option impulse_option{.names = "--impulse", .help = "The impulse response"};
inline constexpr Option step_option{.names = "--step", .help = "The step response"};
inline constexpr Option length_option{
    .names = "--length",
    .value = "NUMBER",
    .help = "Samples of an impulse or step response: 1 to 10000000 [100]"};

/** What --from was given. */
struct From {
  std::optional<std::string> low;  /**< the frequency, as typed */
  std::optional<std::string> file; /**< of a saved design */
};

/** Each raises designer::Refusal with what is wrong. */

/** @return the number and the file among its values. */
From from_in(const Arguments &arguments);

/** @param nyquist  half the sample rate, in Hz
 *  @return the frequencies in Hz, in the order in which they were given, or ascending */
std::vector<double> response_frequencies(const Arguments &arguments, double nyquist);

/** @return how many samples of an impulse or step response. */
std::size_t length_in(const Arguments &arguments);

/** Refuses options that belong to the other kind of response than the one that is asked for. */
void check_kind(const Arguments &arguments);

}  // namespace cli

#endif
