/** Signals from sound files. */
#ifndef SIGNALS_SOUND_READER_H
#define SIGNALS_SOUND_READER_H

#include <memory>
#include <string>
#include <vector>

#include "signals/sound_format.h"
#include "signals/stream.h"

namespace signals {

/** A title, an artist: what a sound file says of itself. The kind is libsndfile's number. */
struct SoundText {
  int kind;
  std::string text;
};

/** Reads any format that libsndfile knows. Integers are taken as fractions of full scale, 1. */
class SoundReader : public Source {
 public:
  /**
   * @param descriptor  of the caller, who closes it after this object is gone: a file at its
   *                    beginning, or a pipe where the format allows that, as WAV, AIFF and AU do
   * @param name        what a sentence calls the file, such as its name in quotes
   * Raises designer::Refusal when it is no sound file, damaged, empty, or shorter than it says.
   */
  SoundReader(int descriptor, std::string name);
  ~SoundReader() override;

  SoundFormat format() const;

  /** @return how many frames there are; 0 where the file does not say. */
  std::uint64_t frames() const { return frames_; }

  const std::vector<SoundText> &texts() const { return texts_; }

  std::size_t channels() const override;
  double samplerate() const override;
  double fraction() const override;
  std::size_t read(std::span<double> frames) override;

 private:
  struct File;

  void check_length() const;

  std::string name_;
  std::unique_ptr<File> file_;
  std::uint64_t frames_ = 0;
  std::uint64_t read_ = 0;
  std::vector<SoundText> texts_;
};

}  // namespace signals

#endif
