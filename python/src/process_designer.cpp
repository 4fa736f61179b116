#include "process_designer.h"

#include <optional>
#include <thread>

#include "brontal/class.h"

namespace python {
namespace {

struct Owned {
  std::optional<designer::Designer> designer;
  std::thread::id owner;
};

}  // namespace

designer::Designer &process_designer() {
  // Never destroyed: filters may be designed until the interpreter has ended.
  static Owned &only = *new Owned;
  const std::thread::id caller = std::this_thread::get_id();
  if (!only.designer || only.owner != caller) {
    only.designer.reset();
    only.designer.emplace(ext_main, patchbay::Checking::trusting);
    only.owner = caller;
  }
  return *only.designer;
}

}  // namespace python
