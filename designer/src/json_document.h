// Reading JSON that others wrote, bounded and without doubled keys.
#ifndef DESIGNER_JSON_DOCUMENT_H
#define DESIGNER_JSON_DOCUMENT_H

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

namespace designer {

using Json = nlohmann::ordered_json;

/** What a document may hold. A design of order 200 has fewer than 5,000 values, and its objects
 *  have fewer than 20 keys each. */
inline constexpr std::size_t most_values = 10000, most_keys = 1000;

/**
 * Parses a text.
 * @param what  what it is called in a sentence
 * Raises Refusal when it is not JSON, nests deeper than 16 levels, has a key twice in an object,
 * more than `most_keys` in one, or more than `most_values` in all, objects and lists included.
 */
Json parse_document(const std::string &text, const std::string &what);

}  // namespace designer

#endif
