// What becomes of the program when memory runs out: it says so and ends.
//
// Nothing that it does is worth more than its output, and much of what a library does
// without memory goes unnoticed: a stream swallows the exception, a host refuses a call.
// So the first `new` that fails ends the process, before anything can be left out.
#ifndef CLI_BASE_OUT_OF_MEMORY_H
#define CLI_BASE_OUT_OF_MEMORY_H

namespace cli {

/** What is said, without the name of the program. */
constexpr char no_memory[] = "out of memory";

/** Ends the process with that sentence and status 3. It allocates nothing, and fits
 *  std::set_new_handler. */
[[noreturn]] void end_without_memory() noexcept;

}  // namespace cli

#endif
