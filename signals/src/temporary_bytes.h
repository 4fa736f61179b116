// Bytes in a temporary file without a name, which is gone with this object.
#ifndef SIGNALS_TEMPORARY_BYTES_H
#define SIGNALS_TEMPORARY_BYTES_H

#include <cstddef>
#include <cstdint>

namespace signals {

/** Raises std::runtime_error when the file cannot be made, read or written. */
class TemporaryBytes {
 public:
  TemporaryBytes();
  ~TemporaryBytes();
  TemporaryBytes(const TemporaryBytes &) = delete;
  TemporaryBytes &operator=(const TemporaryBytes &) = delete;

  /** Both take `size` bytes from the place `at` on, which is within the file when they are read. */
  void read(std::uint64_t at, char *bytes, std::size_t size) const;
  void write(std::uint64_t at, const char *bytes, std::size_t size);

 private:
  int descriptor_;
};

}  // namespace signals

#endif
