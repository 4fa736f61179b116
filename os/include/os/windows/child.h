// Another program, run by this one, on Windows.
#ifndef OS_WINDOWS_CHILD_H
#define OS_WINDOWS_CHILD_H

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace os {

/** A program that runs as long as this object at the most, and no longer than this process. */
class Child {
 public:
  /** The descriptors that it has as its standard streams; they stay the caller's. */
  struct Streams {
    int in;
    int out;
    int err;
  };

  /**
   * @param program  its file; a name without a folder is searched for in those that PATH names, and
   *                 not in the current one
   * @param words    its arguments
   * @param memory   bytes that it may have; any number without
   * Raises std::system_error, with std::errc::no_such_file_or_directory when there is no such
   * program.
   */
  Child(const std::filesystem::path &program, const std::vector<std::string> &words,
        const Streams &streams, std::optional<std::size_t> memory = std::nullopt);
  ~Child(); /**< ends it */
  Child(const Child &) = delete;
  Child &operator=(const Child &) = delete;

  /** @return its exit status; none when it has not ended within so many milliseconds. */
  std::optional<unsigned long> wait(unsigned long milliseconds) const;

 private:
  void *job_ = nullptr;
  void *process_ = nullptr;
};

}  // namespace os

#endif
