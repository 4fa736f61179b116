#include "signals/sound_reader.h"

#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <regex>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "sound_texts.h"

namespace signals {
namespace {

// What programs write as a length that they do not know yet, and lengths beyond.
constexpr std::uint64_t unknown_bytes = 0x7FFFF000;
constexpr std::uint64_t unknown_frames = std::uint64_t{1} << 48U;

// A sentence of libsndfile's within one of ours.
std::string inner(std::string sentence) {
  constexpr std::string_view error = "Error : ";
  if (sentence.starts_with(error)) sentence.erase(0, error.size());
  while (sentence.ends_with('.')) sentence.pop_back();
  return sentence;
}

std::string seconds(std::uint64_t frames, int samplerate) {
  return fmt::format("{:.6g} s", static_cast<double>(frames) / samplerate);
}

// Whether the last page of an Ogg file is complete and says that it is the last.
bool ends_with_last_page(int descriptor) {
  constexpr std::size_t longest_page = 65307, header = 27;
  constexpr unsigned last_of_stream = 4;
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return true;
  std::string end(longest_page, '\0');
  const ssize_t count =
      pread(descriptor, end.data(), end.size(),
            std::max<off_t>(status.st_size - static_cast<off_t>(longest_page), 0));
  end.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  const std::size_t page = end.rfind("OggS");
  if (page == std::string::npos || end.size() < page + header) return false;
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(end[page + at]); };
  std::size_t size = header + byte(26);
  if (end.size() < page + size) return false;
  for (std::size_t i = header; i < header + byte(26); ++i) size += byte(i);
  return (byte(5) & last_of_stream) != 0 && end.size() >= page + size;
}

}  // namespace

struct SoundReader::File {
  SF_INFO info{};
  SNDFILE *handle = nullptr;
  ~File() {
    if (handle != nullptr) sf_close(handle);
  }
};

SoundReader::SoundReader(int descriptor, std::string name)
    : name_(std::move(name)), file_(std::make_unique<File>()) {
  file_->handle = sf_open_fd(descriptor, SFM_READ, &file_->info, SF_FALSE);
  if (file_->handle == nullptr) {
    if (sf_error(nullptr) == SF_ERR_UNRECOGNISED_FORMAT)
      throw designer::Refusal(fmt::format(
          "{} is neither a sound file of a known format nor columns of numbers", name_));
    throw designer::Refusal(fmt::format("{} is damaged: {}", name_, inner(sf_strerror(nullptr))));
  }
  const auto frames = static_cast<std::uint64_t>(std::max<sf_count_t>(file_->info.frames, 0));
  const std::uint64_t bytes = bytes_of_sample(format()) * channels();
  if (frames < unknown_frames &&
      (file_->info.seekable != 0 || bytes == 0 || frames * bytes < unknown_bytes))
    frames_ = frames;
  if (file_->info.seekable != 0) {
    check_length();
    if (format().container == SF_FORMAT_OGG && !ends_with_last_page(descriptor))
      throw designer::Refusal(fmt::format("{} ends early: its last page is missing", name_));
    if (frames == 0) throw designer::Refusal(fmt::format("{} is empty: it has no samples", name_));
  }
  texts_ = texts_of(file_->handle);
}

SoundReader::~SoundReader() = default;

SoundFormat SoundReader::format() const {
  return {file_->info.format & SF_FORMAT_TYPEMASK, file_->info.format & SF_FORMAT_SUBMASK};
}

std::size_t SoundReader::channels() const { return static_cast<std::size_t>(file_->info.channels); }

double SoundReader::samplerate() const { return file_->info.samplerate; }

double SoundReader::fraction() const {
  return frames_ > 0 ? static_cast<double>(read_) / static_cast<double>(frames_) : -1.0;
}

// libsndfile shortens a file that is cut off to what is there, and only its log says so.
void SoundReader::check_length() const {
  std::string log(std::size_t{1} << 14U, '\0');
  const int size =
      sf_command(file_->handle, SFC_GET_LOG_INFO, log.data(), static_cast<int>(log.size()));
  log.resize(static_cast<std::size_t>(std::max(size, 0)));
  static const std::regex shortened(R"((?:data|SSND|Data Size) *: (\d+) \(should be (\d+)\))");
  std::smatch found;
  if (!std::regex_search(log, found, shortened)) return;
  const std::uint64_t said = std::stoull(found[1]), there = std::stoull(found[2]);
  if (said >= unknown_bytes || said <= there + 1) return;
  throw designer::Refusal(
      fmt::format("{} ends early: it has {} of {} bytes of sound", name_, there, said));
}

std::size_t SoundReader::read(std::span<double> frames) {
  const auto room = static_cast<sf_count_t>(frames.size() / channels());
  const auto count = static_cast<std::size_t>(
      std::max<sf_count_t>(sf_readf_double(file_->handle, frames.data(), room), 0));
  const std::size_t samples = count * channels();
  const auto unfit =
      std::find_if(frames.begin(), frames.begin() + static_cast<std::ptrdiff_t>(samples),
                   [](double x) { return !std::isfinite(x); });
  if (unfit != frames.begin() + static_cast<std::ptrdiff_t>(samples)) {
    const auto at = static_cast<std::uint64_t>(unfit - frames.begin());
    throw designer::Refusal(
        fmt::format("{} has a sample that is not finite, in channel {} after {}", name_,
                    at % channels() + 1, seconds(read_ + at / channels(), file_->info.samplerate)));
  }
  read_ += count;
  if (count > 0) return count;
  if (sf_error(file_->handle) != SF_ERR_NO_ERROR)
    throw designer::Refusal(fmt::format("{} is damaged after {}: {}", name_,
                                        seconds(read_, file_->info.samplerate),
                                        inner(sf_strerror(file_->handle))));
  if (read_ < frames_)
    throw designer::Refusal(fmt::format("{} ends early: it has {} of {} samples{}", name_, read_,
                                        frames_, channels() > 1 ? " a channel" : ""));
  if (read_ == 0) throw designer::Refusal(fmt::format("{} is empty: it has no samples", name_));
  return 0;
}

}  // namespace signals
