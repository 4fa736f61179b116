// Modules: the libraries that bring classes.
#ifndef PATCHBAY_MODULES_H
#define PATCHBAY_MODULES_H

#include <filesystem>

#include "operations.h"

namespace patchbay {

struct State;

/** Loads a module and runs its `ext_main`. Raises Error if it is not one, and std::runtime_error if
 *  memory runs out. */
void load_module(State &s, const std::filesystem::path &path);

/** Runs the `ext_main` of a module that is linked in. Raises Error if that has been done. */
void load_module(State &s, void (*ext_main)());

/** Unloads all modules, the newest first, with their classes and leaked instances. */
void unload_modules(State &s);

/** @return whether ext_main is running; reports the operation when it is not. */
bool is_loading(State &s, Op op);

}  // namespace patchbay

#endif
