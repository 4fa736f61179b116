// Writing files that are either complete or unchanged.
#ifndef CLI_BASE_OUTPUT_FILE_H
#define CLI_BASE_OUTPUT_FILE_H

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cli {

class FileWriting;

/**
 * A file being written. Its name appears, or the file that was there changes,
 * only when it is complete: the text goes to a file without a name in the same
 * folder, which takes its place at the end; nothing is left behind, however the program ends.
 * (Where the file system has no files without names, it has a name that begins with ".veltane-"; a
 * signal that can be caught removes it.)
 *
 * A file that must stay the same one gets the complete text copied into it at the end: one
 * with several hard links, one whose owner another could not keep, one in a folder where nothing
 * can be created, one that is a mount point. Anything that is not a regular file, such as a pipe,
 * /dev/null, or a descriptor such as /dev/stdout, is written to directly.
 *
 * On Windows there is always a name, and the system removes the file with the process; a file
 * is replaced whatever its links and owner, and only what is no file on a disk is written to
 * directly.
 */
class OutputFile {
 public:
  /** Raises designer::Refusal if it is a folder or its folder does not exist, std::runtime_error if
   *  nothing can be written there. */
  explicit OutputFile(const std::filesystem::path &path);
  ~OutputFile(); /**< without `finish`, it is as if nothing had been written */
  OutputFile(const OutputFile &) = delete;
  OutputFile &operator=(const OutputFile &) = delete;

  /** Appends. @return as `print`. Raises std::runtime_error if it cannot write, such as to a full
   *  disk. */
  bool write(std::string_view text);

  /** @return the descriptor of a file that is empty so far, open for reading and writing, for
   *          libraries that write files themselves: what they leave in it is what has been written.
   *          None where it is written to directly. */
  std::optional<int> new_file() const;

  /** Makes it the file. Raises std::runtime_error. */
  void finish();

 private:
  std::unique_ptr<FileWriting> writing_;
};

/** Writes a text to a file, whole or not at all; without a path, or with "-", to
 *  standard output. Raises as OutputFile and `print`. */
void write_output(const std::optional<std::string> &path, std::string_view text);

}  // namespace cli

#endif
