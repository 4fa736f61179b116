// Lines of a batch: each gives one line of JSON, with a design or an error.

#include <sstream>

#include "batch.h"
#include "fuzz.h"
#include "json_text.h"
#include "lines.h"

namespace {

// A design of high order takes long under the sanitizers; more lines tell no more.
constexpr std::size_t most_lines = 4;

void check(const cli::Line &line, const cli::Result &result) {
  fuzz::require(result.text.find('\n') == std::string::npos, "a result is not one line");
  const cli::Json document = cli::parse_json(result.text, "the result");
  fuzz::require(document.at("line") == line.number, "a result is not that of its line");
  fuzz::require(
      document.contains("error") != result.good && document.contains("dictionary") == result.good,
      "a result is neither a design nor an error");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const fuzz::File file(fuzz::text_of(data, size));
  cli::LineReader reader(file.name());
  std::ostringstream printed;
  patchbay::Host host(printed);
  host.load(fuzz::module());
  while (!reader.at_end()) reader.read();
  for (const cli::Line &line : reader.take(most_lines))
    check(line, cli::design_line(host, {}, line));
  fuzz::require(host.close().empty(), "a design broke the host's rules");
  return 0;
}
