#include "output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include <fmt/format.h>

#include "subcommand.h"

namespace cli {
namespace {

std::string reason(int error) { return std::generic_category().message(error); }

// What a newly made file may be read and written by.
mode_t new_file_mode() {
  const mode_t mask = umask(0);
  umask(mask);
  return static_cast<mode_t>(0666) & ~mask;
}

std::string printable(const std::string &text) {
  std::string shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7f)
      shown += fmt::format("\\x{:02x}", byte);
    else
      shown += c;
  }
  return shown;
}

// UTF-8 characters are left whole.
std::string shortened(const std::string &text) {
  constexpr std::size_t head = 200;
  constexpr std::size_t tail = 300;
  if (text.size() <= head + tail) return text;
  const auto is_inside = [&](std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xc0U) == 0x80;
  };
  std::size_t left = head;
  std::size_t right = text.size() - tail;
  while (left > 0 && is_inside(left)) --left;
  while (is_inside(right)) ++right;
  return text.substr(0, left) + " ... " + text.substr(right);
}

}  // namespace

int write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return written < 0 ? errno : EIO;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

void print(std::string_view text) {
  if (write_all(STDOUT_FILENO, text) != 0)
    throw std::runtime_error("standard output cannot be written to");
}

std::string shown(const std::string &sentence) { return shortened(printable(sentence)); }

void say(const std::string &sentence) {
  write_all(STDERR_FILENO, "veltane: " + shown(sentence) + '\n');
}

// From the first constructor on the object exists, and its destructor cleans up
// whatever the second one raises.
OutputFile::OutputFile(const std::filesystem::path &path) : OutputFile() {
  shown_ = target_ = path;
  struct stat old {};
  const bool exists = stat(path.c_str(), &old) == 0;
  if (exists && S_ISDIR(old.st_mode))
    throw Refusal(fmt::format("'{}' is a folder; -o takes the name of a file", path.string()));
  if (exists && !S_ISREG(old.st_mode)) {
    descriptor_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor_ < 0) fail(errno);
    return;
  }
  std::error_code unresolved;
  if (exists) target_ = std::filesystem::canonical(path, unresolved);
  if (unresolved) fail(unresolved.value());
  const std::filesystem::path folder = target_.has_parent_path() ? target_.parent_path() : ".";
  if (std::error_code unseen; !std::filesystem::is_directory(folder, unseen))
    throw Refusal(fmt::format("there is no folder '{}' to write '{}' in", folder.string(),
                              target_.filename().string()));
  open_in(folder);
  const mode_t mode = exists ? old.st_mode & 07777U : new_file_mode();
  if (fchmod(descriptor_, mode) != 0) fail(errno);
}

void OutputFile::open_in(const std::filesystem::path &folder) {
  replaces_ = true;
  descriptor_ = open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  if (descriptor_ >= 0) return;
  std::string name = (folder / ".veltane-XXXXXX").string();
  descriptor_ = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ < 0) fail(errno);
  temporary_ = name;
}

// A file without a name cannot take the place of another: it needs a name first.
void OutputFile::give_name() {
  const std::string file = fmt::format("/proc/self/fd/{}", descriptor_);
  for (int attempt = 0; temporary_.empty(); ++attempt) {
    const auto name = target_.parent_path() / fmt::format(".veltane-{}-{}", getpid(), attempt);
    if (linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
      temporary_ = name;
    else if (errno != EEXIST)
      fail(errno);
  }
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0) close(descriptor_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::write(std::string_view text) {
  if (const int error = write_all(descriptor_, text); error != 0) fail(error);
}

void OutputFile::finish() {
  if (replaces_) {
    if (fsync(descriptor_) != 0) fail(errno);
    give_name();
  }
  const int closed = close(descriptor_);
  descriptor_ = -1;
  if (closed != 0) fail(errno);
  if (!replaces_) return;
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) fail(errno);
  temporary_.clear();
}

void OutputFile::fail(int error) const {
  throw std::runtime_error(
      fmt::format("'{}' cannot be written: {}", shown_.string(), reason(error)));
}

void write_output(const std::optional<std::string> &path, std::string_view text) {
  if (!path || *path == "-") return print(text);
  OutputFile file(*path);
  file.write(text);
  file.finish();
}

}  // namespace cli
