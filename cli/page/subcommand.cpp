// `veltane page`: the box in a browser, as one file.

#include <array>
#include <filesystem>
#include <stdexcept>

#include <fmt/format.h>

#include "args/subcommands.h"
#include "base/input_file.h"
#include "base/installation.h"
#include "base/messages.h"
#include "base/output_file.h"
#include "designer/refusal.h"
#include "os/path.h"
#include "text/shell.h"

namespace cli {
namespace {

constexpr Option page_option{.names = "-o,--output",
                             .value = "FILE",
                             .help =
                                 "Write to this file, either whole or not at all; - is standard "
                                 "output [veltane.html]"};

constexpr std::array options{&page_option};

constexpr std::array<std::string_view, 2> examples{"veltane page", "veltane page -o filters.html"};

std::string description() {
  return "Writes a page that holds the object itself: its settings as dials, and pictures of the\n"
         "filter that follow them. It is one file, which any browser opens from a disk, a mail\n"
         "or a web server, with nothing installed and without a network.";
}

bool is_file(const std::filesystem::path &path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

// The page that was built for this program. All build trees of a source folder have the same one
// beside them.
std::filesystem::path built_page() {
  const std::filesystem::path here = installation();
  std::filesystem::path own = here / "share/veltane/veltane.html";
  if (is_file(own)) return own;
  if (is_file(here / "CMakeCache.txt"))
    if (auto beside = here.parent_path() / "page/veltane.html"; is_file(beside)) return beside;
  throw std::runtime_error(fmt::format(
      "the page is missing: script/page builds it, and '{}' is where an installation has it",
      os::name_of(own)));
}

// That it cannot be read is no fault of the request.
std::string read_page(const std::filesystem::path &page) {
  try {
    return read_input(os::name_of(page));
  } catch (const designer::Refusal &refusal) {
    throw std::runtime_error(refusal.what());
  }
}

int run(const Request &request) {
  const std::string file = request.arguments.value(page_option).value_or("veltane.html");
  const std::string page = read_page(built_page());
  if (file == "-") {
    print(page);
    return 0;
  }
  OutputFile out(os::path_of(file));
  const bool is_alone = out.new_file().has_value();
  out.write(page);
  out.finish();
  // Standard output may be where the page has gone.
  if (is_alone)
    print(as_message(fmt::format("'{}' is written; any browser opens it: {}", file,
                                 text::shell_line({"xdg-open", file}))) +
          '\n');
  return 0;
}

}  // namespace

const Subcommand page_subcommand{.name = "page",
                                 .summary = "Writes the box as a page for any browser",
                                 .description = description,
                                 .options = options,
                                 .shared = SharedOptions::none,
                                 .examples = examples,
                                 .run = run};

}  // namespace cli
