#include "apply/output.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

#include "args/saved_file.h"
#include "base/messages.h"
#include "designer/refusal.h"
#include "os/descriptor.h"
#include "os/path.h"
#include "os/temporary.h"
#include "signals/column_writer.h"
#include "signals/sound_writer.h"
#include "text/letters.h"

namespace cli {

class Output::TemporaryFile {
 public:
  TemporaryFile() : descriptor_(os::open_temporary()) {
    if (descriptor_ < 0) fail(errno);
  }
  ~TemporaryFile() { close(descriptor_); }
  TemporaryFile(const TemporaryFile &) = delete;
  TemporaryFile &operator=(const TemporaryFile &) = delete;

  int descriptor() const { return descriptor_; }

  template <typename Write>
  void give_to(Write write) const {
    std::array<char, std::size_t{1} << 16U> block;
    for (std::uint64_t at = 0;;) {
      const std::ptrdiff_t count = os::read_at(descriptor_, block.data(), block.size(), at);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) fail(errno);
      if (count == 0 || !write({block.data(), static_cast<std::size_t>(count)})) return;
      at += static_cast<std::uint64_t>(count);
    }
  }

 private:
  [[noreturn]] static void fail(int error) {
    throw std::runtime_error(fmt::format("a temporary file in '{}' cannot be used: {}",
                                         os::name_of(os::temporary_folder()),
                                         std::generic_category().message(error)));
  }

  int descriptor_;
};

namespace {

constexpr std::array<std::string_view, 5> text_extensions{"csv", "txt", "tsv", "dat", "asc"};
constexpr std::array<std::string_view, 5> unwritten_extensions{"mp3", "opus", "m4a", "aac", "wma"};

template <typename List>
bool holds(const List &list, std::string_view word) {
  return std::find(list.begin(), list.end(), word) != list.end();
}

// Of the file, without its point and in small letters.
std::string extension_of(const std::optional<std::string> &file) {
  if (!file || *file == "-") return {};
  std::string extension = os::name_of(os::path_of(*file).extension());
  extension.erase(0, 1);
  return text::lower_case(extension);
}

int whole_rate(double samplerate) {
  if (samplerate != std::floor(samplerate) ||
      !(samplerate >= 1.0 && samplerate <= std::numeric_limits<int>::max()))
    throw designer::Refusal(
        fmt::format("sound files have whole sample rates in Hz, not {}", samplerate));
  return static_cast<int>(samplerate);
}

// Before hours of work, where that is known.
void check_size(const Input &input, signals::SoundFormat format, const std::string &name) {
  const auto most = signals::most_bytes(format);
  if (!most || input.sound() == nullptr) return;
  if (input.sound()->frames() * input.source().channels() * signals::bytes_of_sample(format) <=
      *most)
    return;
  throw designer::Refusal(
      fmt::format("{} would be larger than the 4 GiB that {} holds; give -o a file that ends in "
                  ".rf64 or .w64",
                  name, signals::container_name(format)));
}

// Says where samples lose bits that nobody asked to be lost.
void warn_of_loss(const Input &input, signals::SoundFormat format, const std::string &name) {
  if (input.sound() == nullptr) return;
  const signals::SoundFormat from = input.sound()->format();
  const bool from_floats = signals::holds_floats(from);
  const int bits = signals::integer_bits(format);
  if (bits > 0 ? from_floats || signals::integer_bits(from) > bits
               : !signals::holds_floats(format) && (from_floats || signals::integer_bits(from) > 0))
    warn(fmt::format("{} has {}, and {} {}: {} does not hold what the input has", name,
                     signals::encoding_name(format), input.name(), signals::encoding_name(from),
                     signals::container_name(format)));
}

}  // namespace

Output::Output(const OutputRequest &request, const Input &input, double samplerate) {
  const std::string extension = extension_of(request.file);
  const bool to_stdout = !request.file || *request.file == "-";
  const std::string name = to_stdout ? "standard output" : in_quotes(*request.file);
  if (holds(unwritten_extensions, extension))
    throw designer::Refusal(
        fmt::format("{}: files that end in .{} are not written; choose .wav, .flac, .aiff or .ogg",
                    name, extension));
  const bool sound = signals::is_sound_extension(extension) ||
                     (!holds(text_extensions, extension) && input.sound() != nullptr);
  if (!sound && request.bits)
    throw designer::Refusal("--bits is for sound files; columns have all digits of a double");
  const std::size_t channels = input.source().channels();
  if (sound) {
    std::optional<signals::SoundFormat> from;
    if (input.sound() != nullptr) from = input.sound()->format();
    format_ =
        signals::output_format(extension, from, request.bits, channels, whole_rate(samplerate));
    check_size(input, *format_, name);
    if (to_stdout && isatty(STDOUT_FILENO) != 0)
      throw designer::Refusal("a sound file does not go to a terminal; -o FILE names a file");
    if (!request.bits) warn_of_loss(input, *format_, name);
  }
  if (!to_stdout) file_ = std::make_unique<OutputFile>(os::path_of(*request.file));
  if (sound) {
    const std::vector<signals::SoundText> texts =
        input.sound() != nullptr ? input.sound()->texts() : std::vector<signals::SoundText>{};
    sink_ = std::make_unique<signals::SoundWriter>(sound_descriptor(), name, *format_, channels,
                                                   whole_rate(samplerate), texts);
    return;
  }
  const auto text = [this](std::string_view part) { return write(part); };
  if (input.columns() != nullptr)
    sink_ = std::make_unique<signals::ColumnWriter>(text, *input.columns());
  else
    sink_ =
        std::make_unique<signals::ColumnWriter>(text, channels, extension == "tsv" ? '\t' : ',');
}

Output::~Output() = default;

bool Output::write(std::string_view text) const {
  return file_ != nullptr ? file_->write(text) : print(text);
}

int Output::sound_descriptor() {
  if (file_ != nullptr)
    if (const auto descriptor = file_->new_file()) return *descriptor;
  if (file_ == nullptr && signals::comes_as_it_is_written(*format_)) return STDOUT_FILENO;
  temporary_ = std::make_unique<TemporaryFile>();
  return temporary_->descriptor();
}

void Output::finish() {
  sink_->finish();
  if (temporary_) temporary_->give_to([this](std::string_view part) { return write(part); });
  if (file_ != nullptr) file_->finish();
}

}  // namespace cli
