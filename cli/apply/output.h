// Where the filtered signal goes: a sound file or columns of numbers, into a file or a pipe.
#ifndef CLI_APPLY_OUTPUT_H
#define CLI_APPLY_OUTPUT_H

#include <memory>
#include <optional>
#include <string>

#include "apply/input.h"
#include "base/output_file.h"
#include "signals/sound_format.h"
#include "signals/stream.h"

namespace cli {

/** What was asked of the output. */
struct OutputRequest {
  std::optional<std::string> file; /**< none, or "-", for standard output */
  std::optional<std::string> bits; /**< one of signals::encoding_words */
};

/**
 * The output of one input. A file is complete or unchanged. Into a pipe go columns and AU as they
 * come; other sound files have their length at their beginning, so that they wait in a temporary
 * file until it is known.
 */
class Output {
 public:
  /**
   * @param input  stays for as long as this object
   * @param samplerate  in Hz
   * Raises designer::Refusal when the format does not hold the signal, and as OutputFile.
   */
  Output(const OutputRequest &request, const Input &input, double samplerate);
  ~Output();
  Output(const Output &) = delete;
  Output &operator=(const Output &) = delete;

  signals::Sink &sink() const { return *sink_; }

  /** @return the format of a sound file; none for columns. */
  const std::optional<signals::SoundFormat> &format() const { return format_; }

  /** Completes it. Raises std::runtime_error. */
  void finish();

 private:
  class TemporaryFile;

  bool write(std::string_view text) const;
  int sound_descriptor();

  std::unique_ptr<OutputFile> file_;          // none for standard output
  std::unique_ptr<TemporaryFile> temporary_;  // of a sound file on its way into a pipe
  std::optional<signals::SoundFormat> format_;
  std::unique_ptr<signals::Sink> sink_;
};

}  // namespace cli

#endif
