// The text of a box, and what the box does with it.

#include <sstream>

#include "fuzz.h"
#include "patchbay/host.h"

namespace {

void require_clean(patchbay::Host &host) {
  for (const std::string &problem : host.close()) fuzz::require(false, problem);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string text = fuzz::text_of(data, size);
  std::ostringstream printed;
  patchbay::Host host(printed);
  host.load(fuzz::module());
  try {
    const patchbay::Box box = host.make(text);
    host.run_deferred();
    host.double_click(box);
    host.send(box, "bang");
    for (const std::string &name : host.dictionary_names()) host.dictionary(name);
  } catch (const patchbay::Error &) {
    // A wrong text is refused in a sentence; that nothing is left behind shows below.
  }
  require_clean(host);
  return 0;
}
