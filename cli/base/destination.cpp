#include "base/destination.h"

#include <charconv>
#include <string>

namespace cli {
namespace {

namespace fs = std::filesystem;

// The kernel's own limit.
constexpr int most_links = 40;

// A folder by its one name, as far as it exists.
fs::path resolved(const fs::path &folder) {
  std::error_code unresolved;
  fs::path whole = fs::canonical(folder, unresolved);
  return unresolved ? folder.lexically_normal() : whole;
}

bool holds_descriptors(const fs::path &folder) {
  for (const char *name : {"/proc/self/fd", "/proc/thread-self/fd", "/dev/fd"})
    if (folder == name || folder == resolved(name)) return true;
  return false;
}

std::optional<int> number(const std::string &text) {
  int value = 0;
  const char *const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < 0) return std::nullopt;
  return value;
}

bool is_in_proc(const fs::path &folder) {
  return folder == "/proc" || folder.string().starts_with("/proc/");
}

}  // namespace

Destination destination(const fs::path &path) {
  Destination found;
  fs::path at = fs::absolute(path);
  for (int links = 0;; ++links) {
    // A name that ends with a slash is that of a folder, as "." is.
    if (!at.has_filename()) at = at.parent_path();
    const fs::path folder = resolved(at.parent_path());
    at = folder / at.filename();
    if (holds_descriptors(folder)) found.descriptor = number(at.filename().string());
    if (found.descriptor) break;
    found.in_proc |= is_in_proc(folder);
    // What a link in /proc says is for people: only the link itself leads there.
    if (found.in_proc || !fs::is_symlink(fs::symlink_status(at))) break;
    if (links == most_links)
      throw fs::filesystem_error("", path,
                                 std::make_error_code(std::errc::too_many_symbolic_link_levels));
    at = folder / fs::read_symlink(at);
  }
  found.file = at;
  struct stat old {};
  if (stat(at.c_str(), &old) == 0) found.old = old;
  return found;
}

}  // namespace cli
