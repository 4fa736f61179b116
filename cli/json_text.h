// JSON: reading what others wrote, bounded, without doubled keys, and with a sentence for what
// is wrong with it; and writing.
#ifndef VELTANE_CLI_JSON_TEXT_H
#define VELTANE_CLI_JSON_TEXT_H

#include <nlohmann/json.hpp>
#include <string>

namespace cli {

using Json = nlohmann::ordered_json;

/** What a document may hold. A design of order 200 has less than 5,000 values, and an object of it
 *  less than 20 keys. */
constexpr std::size_t most_values = 10000, most_keys = 1000;

/**
 * Parses a text.
 * @param name  what it is called in a sentence
 * Raises Refusal when it is no JSON, nests deeper than 16 levels, has a key twice in an object,
 * more than `most_keys` in one, or more than `most_values` in all, objects and lists included.
 */
Json parse_json(const std::string &text, const std::string &name);

/**
 * Reads a file whole.
 * @param file  its name; "-" for standard input
 * Raises Refusal when it cannot be read, is a folder, or is larger than 64 MiB.
 */
std::string read_input(const std::string &file);

/** @return a value as JSON on one line, in which `text::printable` would change nothing: what it would
 *  change is written as its code. Texts that are not UTF-8 are made so. */
std::string json_text(const Json &value);

/** @return the text of a document, lists on one line each; numbers with 17 significant digits,
 *  null for those that are not finite. */
std::string json_page(const Json &document);

}  // namespace cli

#endif
