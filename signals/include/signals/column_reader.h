/** Signals as columns of numbers in a text: a column a channel, a line a frame. */
#ifndef SIGNALS_COLUMN_READER_H
#define SIGNALS_COLUMN_READER_H

#include <memory>
#include <string>
#include <vector>

#include "signals/stream.h"

namespace signals {

class LineQueue;
class Lines;

/** Which of the columns are the signal, and what stands around them. */
struct ColumnLayout {
  char delimiter;                    /**< a space for blanks of any number */
  std::size_t columns;               /**< all of them */
  std::vector<std::size_t> channels; /**< the column of each channel, from 0 */
};

/** What becomes of the rest of the text: the other columns, a line of names, comments. */
enum class RestOfText { dropped, kept };

/**
 * Reads columns that tabs, semicolons, commas or blanks separate; the first line decides which. It
 * may have names. Empty lines, and those that begin with # or %, have no frame. Numbers have
 * decimal points. `read` gives what has arrived and waits only where that is nothing.
 */
class ColumnReader : public Source {
 public:
  /**
   * Reads up to the first frame.
   * @param descriptor  of the caller, who closes it after this object is gone
   * @param name        what a sentence calls the text, such as its name in quotes
   * @param wanted      the columns that are the signal: their names, or their numbers from 1;
   *                    "all" for all. None where the text has only one
   * Raises designer::Refusal when there is no such column, or no frame.
   */
  ColumnReader(int descriptor, std::string name, const std::vector<std::string> &wanted,
               RestOfText rest);
  ~ColumnReader() override;

  const ColumnLayout &layout() const { return layout_; }

  /** @return the lines that were read, those without a frame as well; null where they are dropped.
   *          It belongs to this object. */
  LineQueue *rest() const { return rest_.get(); }

  std::size_t channels() const override { return layout_.channels.size(); }
  double samplerate() const override { return 0.0; }
  double fraction() const override;
  std::size_t read(std::span<double> frames) override;

 private:
  void begin(const std::vector<std::string> &wanted);
  std::vector<std::size_t> chosen(const std::vector<std::string> &wanted,
                                  const std::vector<std::string> &names) const;
  bool read_frame(double *frame);
  [[noreturn]] void refuse_cell(std::string_view cell, std::size_t column) const;

  std::string name_;
  std::unique_ptr<Lines> lines_;
  std::unique_ptr<LineQueue> rest_;
  ColumnLayout layout_{};
  std::vector<double> first_;  // the frame that the constructor has read
};

}  // namespace signals

#endif
