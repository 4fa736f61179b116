// JSON documents: what is read is written, and what is written reads back to the same.

#include "fuzz.h"
#include "json_text.h"
#include "subcommand.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  cli::Json document;
  try {
    document = cli::parse_json(fuzz::text_of(data, size), "the input");
  } catch (const cli::Refusal &) {
    return 0;
  }
  fuzz::require(cli::parse_json(cli::json_page(document), "the page") == document,
                "a page does not read back to the same document");
  return 0;
}
