/** Signals into sound files. */
#ifndef SIGNALS_SOUND_WRITER_H
#define SIGNALS_SOUND_WRITER_H

#include <memory>
#include <string>
#include <vector>

#include "signals/sound_format.h"
#include "signals/sound_reader.h"
#include "signals/stream.h"

namespace signals {

/**
 * Writes a sound file. An integer sample is the nearest to the double, halves to even, without
 * dither; integers that a SoundReader has read come out the same. Beyond full scale they are
 * limited, and counted; floats are not.
 */
class SoundWriter : public Sink {
 public:
  /**
   * @param descriptor  of the caller, who closes it after this object is gone: an empty file, or,
   *                    for AU, a pipe
   * @param name        what a sentence calls the file
   * @param texts       what it says of itself; the format may leave them out
   * Raises std::runtime_error when it cannot be written.
   */
  SoundWriter(int descriptor, std::string name, SoundFormat format, std::size_t channels,
              int samplerate, const std::vector<SoundText> &texts);
  ~SoundWriter() override;

  bool write(std::span<const double> frames) override;
  void finish() override;
  std::uint64_t clipped() const override { return clipped_; }

 private:
  struct File;

  bool write_integers(std::span<const double> frames);
  bool write_numbers(std::span<const double> frames);
  bool complete(std::int64_t written, std::size_t samples) const;

  std::string name_;
  SoundFormat format_;
  std::unique_ptr<File> file_;
  std::vector<int> integers_;
  std::vector<double> numbers_;
  std::uint64_t bytes_ = 0;
  std::uint64_t clipped_ = 0;
};

}  // namespace signals

#endif
