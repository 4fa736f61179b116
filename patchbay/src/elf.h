// What can be learned from a module's file before it is loaded.
#ifndef PATCHBAY_ELF_H
#define PATCHBAY_ELF_H

#include <cstdint>
#include <filesystem>

namespace patchbay {

/**
 * How far an ELF file reaches by its own account: the loader maps what a file
 * claims to have, and touching missing parts ends the process.
 * @return in bytes; 0 for a file of another kind or another machine, which the
 *         loader refuses by itself
 */
std::uint64_t claimed_size(const std::filesystem::path &file);

}  // namespace patchbay

#endif
