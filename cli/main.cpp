// The command `veltane`: reads arguments, runs a box, prints what it published.
//
// Exit status: 0 done; 2 the request was wrong; 3 something else failed.

#include <cstdio>
#include <exception>

#include <fmt/format.h>

#include "arguments.h"
#include "design.h"
#include "patchbay/host.h"
#include "present.h"

namespace {

// The module lies beside the program: PREFIX/bin/veltane, PREFIX/lib/veltane/.
std::filesystem::path default_module() {
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  return program.parent_path().parent_path() / "lib" / "veltane" / "veltane.so";
}

void print(const std::string &text) {
  const std::size_t written = std::fwrite(text.data(), 1, text.size(), stdout);
  if (written != text.size() || std::fflush(stdout) != 0)
    throw std::runtime_error("standard output cannot be written to");
}

void load(patchbay::Host &host, const std::filesystem::path &module) {
  try {
    host.load(module.empty() ? default_module() : module);
    host.attributes("veltane");
  } catch (const patchbay::Error &error) {
    throw cli::Refusal(fmt::format("the veltane module is missing: {}", error.what()));
  }
}

void run(const cli::Words &arguments) {
  const cli::Command command = cli::parse_command(arguments);
  patchbay::Host host;
  load(host, command.module);
  const cli::DesignRequest request = cli::parse_design(command.rest, host.attributes("veltane"));
  const cli::Design design = cli::run_design(host, request.settings);
  for (const std::string &remark : design.remarks) fmt::print(stderr, "veltane: {}\n", remark);
  cli::Words spoken{"veltane"};
  spoken.insert(spoken.end(), arguments.begin(), arguments.end());
  print(request.format == "json" ? cli::to_json(design, spoken) : cli::to_text_page(design));
}

}  // namespace

int main(int argc, char **argv) {
  try {
    try {
      run(cli::Words(argv + 1, argv + argc));
    } catch (const cli::Answer &answer) {
      print(answer.text);
    }
    return 0;
  } catch (const cli::Refusal &refusal) {
    fmt::print(stderr, "veltane: {}\n", refusal.what());
    return 2;
  } catch (const std::exception &error) {
    fmt::print(stderr, "veltane: {}\n", error.what());
    return 3;
  }
}
