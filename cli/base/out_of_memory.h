// What becomes of the program when memory runs out: it says so and ends.
//
// Its output is all that matters, and a library that lacks memory often goes on unnoticed: a stream
// swallows the exception, a host refuses a call. So the first `new` that fails ends the process,
// before anything can be left out.
#ifndef CLI_BASE_OUT_OF_MEMORY_H
#define CLI_BASE_OUT_OF_MEMORY_H

namespace cli {

/** The message, without the name of the program. */
constexpr char no_memory[] = "out of memory";

/** Ends the process with that sentence and status 3. It allocates nothing, and suits
 *  std::set_new_handler. */
[[noreturn]] void end_without_memory() noexcept;

}  // namespace cli

#endif
