// Reading a text line by line, as it arrives.
#ifndef CLI_BASE_LINE_READER_H
#define CLI_BASE_LINE_READER_H

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace cli {

struct Line {
  std::size_t number = 0; /**< counts on from that of the first line */
  std::string text;       /**< without its newline */
  bool too_long = false;  /**< the text is only its beginning */
};

/** The lines of a file or of standard input. It holds one block of the file. */
class LineReader {
 public:
  static constexpr std::size_t longest = std::size_t{1} << 20U; /**< of a line, in bytes */

  /** @param file   its name; "-" for standard input. Raises designer::Refusal when it cannot be
   *                read.
   *  @param first  the number of its first line */
  explicit LineReader(const std::string &file, std::size_t first = 1);
  ~LineReader();
  LineReader(const LineReader &) = delete;
  LineReader &operator=(const LineReader &) = delete;

  /** @return what to wait for until there is more to read. */
  int descriptor() const { return descriptor_; }

  /** Reads what has arrived; waits when nothing has. Raises std::runtime_error. */
  void read();

  /** @return whether all of it has been read; lines may still be left to take. */
  bool at_end() const { return at_end_; }

  /** @return how much of the file has been read, from 0 to 1; below 0 where its size
   *  is not known. Another thread than the one that reads may ask. */
  double fraction() const;

  bool empty() const { return lines_.empty(); }

  /** @return up to `count` lines that have been read, in their order. */
  std::vector<Line> take(std::size_t count);

 private:
  void add(const char *begin, const char *end);
  void end_line();

  std::string file_;
  int descriptor_ = -1;
  double size_ = -1.0;
  std::atomic<std::uint64_t> bytes_read_ = 0;
  bool at_end_ = false;
  Line current_;
  std::deque<Line> lines_;
};

}  // namespace cli

#endif
