/**
 * What the fuzz targets share. Each target is one file, fuzz_SUBJECT.cpp, with the
 * function that libFuzzer calls for each input. Its seeds are the files in
 * corpus/SUBJECT, which the ordinary tests feed to the same function.
 */
#ifndef TESTS_FUZZ_FUZZ_H
#define TESTS_FUZZ_FUZZ_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/** Takes one input. Whatever it is, nothing may crash, hang, leak or misbehave. */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace fuzz {

/** The bytes of an input as text. */
std::string text_of(const std::uint8_t *data, std::size_t size);

/** The lines of a text without their newlines. */
std::vector<std::string> lines_of(const std::string &text);

/** Stops the program, with the sentence on standard error, unless it holds. */
void require(bool holds, const std::string &sentence);

/** An input as a file to be read by its name, in memory. */
class File {
 public:
  explicit File(const std::string &text);
  ~File();
  File(const File &) = delete;
  File &operator=(const File &) = delete;

  const std::string &name() const { return name_; }

 private:
  int descriptor_;
  std::string name_;
};

/** @return the file of the module, which stays in memory from now on: what counts
 *  the branches taken in it must not vanish between two inputs. */
const std::string &module();

}  // namespace fuzz

#endif
