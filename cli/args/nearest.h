// What a mistyped word may have meant.
#ifndef CLI_ARGS_NEAREST_H
#define CLI_ARGS_NEAREST_H

#include <optional>
#include <span>
#include <string_view>

namespace cli {

/** @return the word that the fewest letters separate from what was typed, counted as letters added,
 *  left out, changed or exchanged with their neighbour; none where that is more than two of them, or
 *  half of the word. */
std::optional<std::string_view> nearest(std::string_view typed,
                                        std::span<const std::string_view> words);

}  // namespace cli

#endif
