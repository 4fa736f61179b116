// A command line, one word a line.

#include "command.h"
#include "fuzz.h"

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string text = fuzz::text_of(data, size);
  if (text.find('\0') != std::string::npos) return 0;  // no command line has one
  fuzz::run_command(fuzz::lines_of(text));
  return 0;
}
