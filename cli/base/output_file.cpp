#include "base/output_file.h"

#include "base/file_writing.h"
#include "base/messages.h"
#include "os/path.h"

namespace cli {

OutputFile::OutputFile(const std::filesystem::path &path) : writing_(FileWriting::begin(path)) {}

OutputFile::~OutputFile() = default;

bool OutputFile::write(std::string_view text) { return writing_->write(text); }

std::optional<int> OutputFile::new_file() const { return writing_->new_file(); }

void OutputFile::finish() { writing_->finish(); }

void write_output(const std::optional<std::string> &path, std::string_view text) {
  if (!path || *path == "-") {
    print(text);
    return;
  }
  OutputFile file(os::path_of(*path));
  file.write(text);
  file.finish();
}

}  // namespace cli
