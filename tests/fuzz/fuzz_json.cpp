// Saved designs and settings: what is not refused in a sentence is a design.

#include <nlohmann/json.hpp>

#include "designer/refusal.h"
#include "designer/saved_design.h"
#include "fuzz.h"
#include "text/json.h"

namespace {

// Whatever JSON is read is written so that it reads back to the same.
void check_writing(const std::string &input) {
  const text::Json document = text::Json::parse(input, nullptr, false);
  if (document.is_discarded()) return;
  fuzz::require(text::Json::parse(text::json_page(document)) == document,
                "a page does not read back to the same document");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string input = fuzz::text_of(data, size);
  try {
    designer::parse_saved_design(input, "the input");
    check_writing(input);
  } catch (const designer::Refusal &) {
  }
  try {
    designer::parse_settings(input, "the input");
    check_writing(input);
  } catch (const designer::Refusal &) {
  }
  return 0;
}
