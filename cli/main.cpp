// The command `veltane`: reads arguments, runs a subcommand, reports how it
// went.
//
// Exit status: 0 done; 1 the filter has a problem, no family meets the demand, or lines of a
// batch failed; 2 the request was wrong; 3 something else failed.

#include <exception>
#include <new>

#include "base/messages.h"
#include "base/out_of_memory.h"
#include "designer/refusal.h"
#include "dispatch.h"
#include "os/arguments.h"
#include "os/program.h"

namespace {

struct MemoryHandler {
  MemoryHandler() { std::set_new_handler(cli::end_without_memory); }
};

// First of all: the command line library allocates before `main`.
[[gnu::init_priority(101)]] const MemoryHandler memory_handler;

}  // namespace

int main(int argc, char **argv) {
  os::prepare_streams();
  try {
    return cli::run(os::arguments(argc, argv));
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
