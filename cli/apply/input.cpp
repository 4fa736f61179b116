#include "apply/input.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include <fmt/format.h>

#include "args/saved_file.h"
#include "designer/refusal.h"
#include "os/descriptor.h"
#include "os/path.h"
#include "os/pipe.h"
#include "os/temporary.h"

namespace cli {

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ > STDERR_FILENO) close(number_);
  }
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;

  int number() const { return number_; }

 private:
  int number_;
};

namespace {

// As much as a format is known by, and more than a line of a table.
constexpr std::size_t enough_bytes = 4096;
constexpr std::size_t least_bytes = 12;

[[noreturn]] void refuse(const std::string &name, int error) {
  throw designer::Refusal(
      fmt::format("{} cannot be read: {}", name, std::generic_category().message(error)));
}

// A sound file of any format has some of these within its first bytes.
bool is_text(std::string_view bytes) {
  return std::none_of(bytes.begin(), bytes.end(), [](unsigned char c) {
    return c < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\f';
  });
}

// The first bytes of a file that can be read at any place.
std::string first_bytes(int descriptor, const std::string &name) {
  std::string bytes(enough_bytes, '\0');
  const std::ptrdiff_t count = os::read_at(descriptor, bytes.data(), bytes.size(), 0);
  if (count < 0) refuse(name, errno);
  bytes.resize(static_cast<std::size_t>(count));
  return bytes;
}

bool can_come_through_a_pipe(std::string_view bytes) {
  if (is_text(bytes)) return bytes.find('\n') != std::string_view::npos;
  return bytes.size() >= least_bytes &&
         (bytes.starts_with("RIFF") || bytes.starts_with("RIFX") || bytes.starts_with(".snd"));
}

// All that comes, in a file.
std::unique_ptr<Descriptor> collected(int descriptor, const std::string &name) {
  auto file = std::make_unique<Descriptor>(os::open_temporary());
  if (file->number() < 0) refuse(name, errno);
  std::array<char, std::size_t{1} << 16U> block;
  while (true) {
    const std::ptrdiff_t count = os::read_some(descriptor, block.data(), block.size());
    if (count < 0) refuse(name, errno);
    if (count == 0) break;
    if (const int error =
            os::write_all(file->number(), {block.data(), static_cast<std::size_t>(count)});
        error != 0)
      throw std::runtime_error(fmt::format("a temporary file in '{}' cannot be written: {}",
                                           os::name_of(os::temporary_folder()),
                                           std::generic_category().message(error)));
  }
  lseek(file->number(), 0, SEEK_SET);
  return file;
}

}  // namespace

Input::Input(const std::string &file, const Words &columns)
    : name_(file == "-" ? "standard input" : in_quotes(file)),
      descriptor_(
          std::make_unique<Descriptor>(file == "-" ? STDIN_FILENO : os::open_to_read(file))) {
  struct stat status {};
  if (descriptor_->number() < 0 || fstat(descriptor_->number(), &status) != 0) refuse(name_, errno);
  if (S_ISDIR(status.st_mode)) refuse(name_, EISDIR);
  std::string bytes;
  if (S_ISFIFO(status.st_mode)) bytes = os::waiting_bytes(descriptor_->number(), enough_bytes);
  if (!S_ISREG(status.st_mode) && !can_come_through_a_pipe(bytes)) {
    descriptor_ = collected(descriptor_->number(), name_);
    bytes.clear();
  }
  if (bytes.empty()) bytes = first_bytes(descriptor_->number(), name_);
  if (bytes.empty()) throw designer::Refusal(fmt::format("{} is empty", name_));
  if (is_text(bytes)) {
    columns_ = std::make_unique<signals::ColumnReader>(descriptor_->number(), name_, columns,
                                                       signals::RestOfText::kept);
    return;
  }
  sound_ = std::make_unique<signals::SoundReader>(descriptor_->number(), name_);
  if (!columns.empty())
    throw designer::Refusal(
        fmt::format("{} is a sound file, and --column is for columns of numbers: all channels are "
                    "filtered",
                    name_));
}

Input::~Input() = default;

signals::Source &Input::source() const {
  if (sound_) return *sound_;
  return *columns_;
}

}  // namespace cli
