// The signal that is filtered: a sound file or columns of numbers, from a file or a pipe.
#ifndef CLI_APPLY_INPUT_H
#define CLI_APPLY_INPUT_H

#include <memory>
#include <string>

#include "base/words.h"
#include "signals/column_reader.h"
#include "signals/sound_reader.h"

namespace cli {

class Descriptor;

/** A signal, open. */
class Input {
 public:
  /**
   * What it is follows from its first bytes. A pipe is read as it comes where the format allows
   * that, which is WAV, AU and columns; others wait in a temporary file until they are complete.
   * @param file     its name; "-" for standard input
   * @param columns  as for signals::ColumnReader; none where they were not given
   * Raises designer::Refusal when it cannot be read, is neither, or is no signal.
   */
  Input(const std::string &file, const Words &columns);
  ~Input();
  Input(const Input &) = delete;
  Input &operator=(const Input &) = delete;

  signals::Source &source() const;

  /** @return itself as the one or the other; null where it is not. */
  const signals::SoundReader *sound() const { return sound_.get(); }
  const signals::ColumnReader *columns() const { return columns_.get(); }

  /** @return what a sentence calls it: its name in quotes, or "standard input". */
  const std::string &name() const { return name_; }

 private:
  std::string name_;
  std::unique_ptr<Descriptor> descriptor_;
  std::unique_ptr<signals::SoundReader> sound_;
  std::unique_ptr<signals::ColumnReader> columns_;
};

}  // namespace cli

#endif
