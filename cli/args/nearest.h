// What a mistyped word may have meant.
#ifndef CLI_ARGS_NEAREST_H
#define CLI_ARGS_NEAREST_H

#include <optional>
#include <span>
#include <string_view>

namespace cli {

/** @return the word closest to what was typed, by the number of letters added, left out, changed or
 *          exchanged with their neighbour; none if that is more than two, or half of the word. */
std::optional<std::string_view> nearest(std::string_view typed,
                                        std::span<const std::string_view> words);

}  // namespace cli

#endif
