// How a system lets a file appear, or change, only when it is complete.
#ifndef CLI_BASE_FILE_WRITING_H
#define CLI_BASE_FILE_WRITING_H

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

namespace cli {

/** What an OutputFile asks of the system; its functions do what those of an OutputFile say. */
class FileWriting {
 public:
  FileWriting() = default;
  virtual ~FileWriting() = default;
  FileWriting(const FileWriting &) = delete;
  FileWriting &operator=(const FileWriting &) = delete;

  /** Raises as the constructor of OutputFile. */
  static std::unique_ptr<FileWriting> begin(const std::filesystem::path &path);

  virtual bool write(std::string_view text) = 0;
  virtual std::optional<int> new_file() const = 0;
  virtual void finish() = 0;
};

}  // namespace cli

#endif
