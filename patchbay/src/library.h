// Libraries that are loaded while the program runs.
#ifndef PATCHBAY_LIBRARY_H
#define PATCHBAY_LIBRARY_H

#include <filesystem>

namespace patchbay {

/** Loads a library, or finds it loaded already.
 *  @param file   which exists, by its whole path
 *  @param shown  what a sentence calls it
 *  @return its handle, for `close_library` as often as it was opened
 *  Raises Error if the system refuses it, and std::runtime_error if memory runs out. */
void *open_library(const std::filesystem::path &file, const std::filesystem::path &shown);

/** @return a function of it that takes and gives nothing; null if it exports none of that name. */
void (*function_in(void *library, const char *name))();

void close_library(void *library);

}  // namespace patchbay

#endif
