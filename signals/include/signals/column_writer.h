/** Signals as columns of numbers in a text. */
#ifndef SIGNALS_COLUMN_WRITER_H
#define SIGNALS_COLUMN_WRITER_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "signals/column_reader.h"
#include "signals/stream.h"

namespace signals {

/** Writes a line for each frame, with the fewest digits that read back to the same doubles. */
class ColumnWriter : public Sink {
 public:
  /** What takes the text. @return false when nobody reads it any more. */
  using Text = std::function<bool(std::string_view)>;

  /** For a signal that was no text: its channels, with the delimiter between them. */
  ColumnWriter(Text text, std::size_t channels, char delimiter);

  /** For one that was: all of the text stays as it is, but for the numbers of the signal.
   *  @param reader  that has kept the rest of the text, and stays for as long as this object */
  ColumnWriter(Text text, const ColumnReader &reader);

  bool write(std::span<const double> frames) override;
  void finish() override;

 private:
  void add_frame(std::span<const double> frame);

  Text text_;
  std::size_t channels_;
  char delimiter_;
  std::optional<ColumnLayout> layout_;
  LineQueue *rest_ = nullptr;
  std::string block_;
};

}  // namespace signals

#endif
