// The lines of a text as they arrive.
#ifndef SIGNALS_LINES_H
#define SIGNALS_LINES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace signals {

class Lines {
 public:
  static constexpr std::size_t longest = std::size_t{1} << 20U; /**< of a line, in bytes */

  /** @param descriptor  of the caller, from which it reads on
   *  @param name        what a sentence calls the text */
  Lines(int descriptor, std::string name);

  /** @return whether the next line is here already, or the text is at its end. */
  bool ready() const { return at_end_ || buffer_.find('\n', at_) != std::string::npos; }

  /**
   * Takes the next line; waits for it.
   * @return the line without its newline, until the next call; none at the end
   * Raises designer::Refusal for a line that is longer than `longest`, and std::runtime_error when
   * the text cannot be read.
   */
  std::optional<std::string_view> next();

  /** @return the number of the line that was taken last, from 1. */
  std::size_t number() const { return number_; }

  /** @return how much of the text has been read, from 0 to 1; below 0 where its size is not
   *          known. */
  double fraction() const;

 private:
  void fill();

  int descriptor_;
  std::string name_;
  std::string buffer_;
  std::size_t at_ = 0;  // the beginning of the next line in it
  bool at_end_ = false;
  std::size_t number_ = 0;
  double size_ = -1.0;
  double taken_ = 0.0;
};

}  // namespace signals

#endif
