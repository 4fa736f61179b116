// The command `veltane`: reads arguments, runs a subcommand, reports how it
// went.
//
// Exit status: 0 done; 1 the filter has a problem, no family meets the demand, or lines of a
// batch failed; 2 the request was wrong; 3 something else failed.

#include <csignal>
#include <exception>
#include <new>

#include "base/messages.h"
#include "base/out_of_memory.h"
#include "designer/refusal.h"
#include "dispatch.h"

namespace {

struct MemoryHandler {
  MemoryHandler() { std::set_new_handler(cli::end_without_memory); }
};

// First of all: the command line library allocates before `main`.
[[gnu::init_priority(101)]] const MemoryHandler memory_handler;

}  // namespace

int main(int argc, char **argv) {
  // A reader that went away and a file that may not grow are failed writes.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return cli::run(cli::Words(argv + 1, argv + argc));
  } catch (const designer::Refusal &refusal) {
    cli::warn(refusal.what());
    return 2;
  } catch (const std::bad_alloc &) {
    // Not by `new`: libraries have their own ways to ask for memory.
    cli::end_without_memory();
  } catch (const std::exception &error) {
    cli::warn(error.what());
    return 3;
  }
}
