// Lines of a batch: each gives one line of JSON, with a design or an error.

#include "base/line_reader.h"
#include "design/batch.h"
#include "fuzz.h"
#include "text/json.h"

namespace {

// A design of high order takes long under the sanitizers; more lines find nothing more.
constexpr std::size_t most_lines = 4;

void check(const cli::Line &line, const cli::Result &result) {
  fuzz::require(result.text.find('\n') == std::string::npos, "a result is not one line");
  const text::Json document = text::Json::parse(result.text);
  fuzz::require(document.at("line") == line.number, "a result is not that of its line");
  const bool designed = result.outcome == cli::Outcome::designed;
  fuzz::require(
      document.contains("error") != designed && document.contains("dictionary") == designed,
      "a result is neither a design nor an error");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const fuzz::File file(fuzz::text_of(data, size));
  cli::LineReader reader(file.name());
  designer::Designer designer(fuzz::module());
  while (!reader.at_end()) reader.read();
  for (const cli::Line &line : reader.take(most_lines))
    check(line, cli::designed_line(designer, {}, line));
  fuzz::require(designer.close().empty(), "a design broke the host's rules");
  return 0;
}
