#include "modules.h"

#include <algorithm>

#include <fmt/format.h>

#include "call_out.h"
#include "classes.h"
#include "instances.h"
#include "library.h"
#include "state.h"
#include "violations.h"

namespace patchbay {
namespace {

// Takes the classes of a module away, and the module with them.
void unload(State &s, Module module) {
  const auto instances = s.instances;
  for (Instance *x : instances)
    if (x->type->module == module.key) forget_instance(s, *x, Op::object_free);
  const auto classes = s.all_classes;
  for (t_class *c : classes)
    if (c->module == module.key) destroy_class(s, c);
  std::erase(s.modules, module);
  if (module.is_library) close_library(module.key);
}

bool is_loaded(const State &s, void *key) {
  return std::any_of(s.modules.begin(), s.modules.end(),
                     [&](const Module &module) { return module.key == key; });
}

void start(State &s, Module module, void (*ext_main)()) {
  s.modules.push_back(module);
  s.loading = module.key;
  call_out(s, "ext_main", ext_main);
  s.loading = nullptr;
}

}  // namespace

void load_module(State &s, const std::filesystem::path &path) {
  // The system searches folders of its own for a name without a slash; a module
  // is always a file that the user means.
  const std::filesystem::path file = std::filesystem::absolute(path);
  if (!std::filesystem::is_regular_file(file))
    throw Error(fmt::format("there is no module file '{}'", path.string()));
  void *module = open_library(file, path);
  auto *ext_main = function_in(module, "ext_main");
  if (ext_main == nullptr) {
    close_library(module);
    throw Error(fmt::format("'{}' is not a module: it has no function ext_main", path.string()));
  }
  if (is_loaded(s, module)) {
    close_library(module);
    throw Error(fmt::format("'{}' is already loaded", path.string()));
  }
  start(s, {.key = module, .is_library = true}, ext_main);
}

void load_module(State &s, void (*ext_main)()) {
  auto *key = reinterpret_cast<void *>(ext_main);
  if (is_loaded(s, key)) throw Error("this module is already loaded");
  start(s, {.key = key, .is_library = false}, ext_main);
}

bool is_loading(State &s, Op op) {
  if (s.loading != nullptr) return true;
  report(s, std::string(name_of(op)) + " was called outside ext_main");
  return false;
}

void unload_modules(State &s) {
  while (!s.modules.empty()) unload(s, s.modules.back());
}

}  // namespace patchbay
