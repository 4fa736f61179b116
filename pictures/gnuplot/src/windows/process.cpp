#include "gnuplot/process.h"

#include <windows.h>

#include <io.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "ending.h"
#include "os/descriptor.h"
#include "os/temporary.h"
#include "os/windows/child.h"

namespace gnuplot {
namespace {

constexpr char missing[] =
    "gnuplot draws the pictures and is not installed, or its folder is not in PATH";

// A file that goes with this object.
class TemporaryFile {
 public:
  TemporaryFile() : descriptor_(os::open_temporary()) {
    if (descriptor_ < 0) throw not_run(errno);
  }
  ~TemporaryFile() { _close(descriptor_); }
  TemporaryFile(const TemporaryFile &) = delete;
  TemporaryFile &operator=(const TemporaryFile &) = delete;

  int descriptor() const { return descriptor_; }

  void fill(const std::string &text) const {
    if (const int error = os::write_all(descriptor_, text); error != 0) throw not_run(error);
    _lseeki64(descriptor_, 0, SEEK_SET);
  }

  std::size_t size() const { return static_cast<std::size_t>(_filelengthi64(descriptor_)); }

  std::string contents() const {
    std::string text(size(), '\0');
    for (std::size_t at = 0; at < text.size();) {
      const auto count = os::read_at(descriptor_, text.data() + at, text.size() - at, at);
      if (count <= 0) throw not_run(EIO);
      at += static_cast<std::size_t>(count);
    }
    return text;
  }

 private:
  int descriptor_;
};

// @return the exit status
unsigned long finished(const TemporaryFile &in, const TemporaryFile &out, const TemporaryFile &err,
                       const Limits &limits) {
  constexpr unsigned long pause = 50;  // ms
  const os::Child child("gnuplot", {"--default-settings"},
                        {in.descriptor(), out.descriptor(), err.descriptor()}, limits.memory);
  for (unsigned long waited = 0; waited < 1000UL * static_cast<unsigned>(limits.seconds);
       waited += pause) {
    if (const auto status = child.wait(pause)) return *status;
    if (out.size() > limits.output || err.size() > limits.output) throw too_large(limits);
  }
  throw too_slow(limits);
}

// Programs there write the lines of a text, which an SVG is, with another ending.
std::string with_plain_lines(std::string picture) {
  if (!picture.starts_with("<?xml")) return picture;
  std::string plain;
  for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 1) {
    end = picture.find("\r\n", at);
    plain.append(picture, at, end - at);
  }
  return plain;
}

}  // namespace

std::string run(const std::string &script, const Limits &limits) {
  const TemporaryFile in, out, err;
  in.fill(script);
  unsigned long status = 0;
  try {
    status = finished(in, out, err, limits);
  } catch (const std::system_error &error) {
    if (error.code() == std::errc::no_such_file_or_directory) throw std::runtime_error(missing);
    throw not_run(error.code().default_error_condition().value());
  }
  return drawn(with_plain_lines(out.contents()), status == 0 ? Ended::well : Ended::badly,
               err.contents());
}

}  // namespace gnuplot
