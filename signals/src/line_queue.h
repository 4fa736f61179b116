// Lines that wait.
#ifndef SIGNALS_LINE_QUEUE_H
#define SIGNALS_LINE_QUEUE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "temporary_bytes.h"

namespace signals {

/** Lines in their order: what is added last comes out last. Beyond four megabytes they wait in a
 *  temporary file. Raises std::runtime_error where that cannot be written or read. */
class LineQueue {
 public:
  /** @return whether no line waits. */
  bool empty() const { return first_.empty() && file_size_ == 0; }

  /** @param line  without a newline in it */
  void push(const std::string &line);

  /** @return the line that has waited longest; there has to be one. */
  std::string pop();

 private:
  void refill();

  std::deque<std::string> first_;  // older than those in the file
  std::size_t first_bytes_ = 0;
  std::unique_ptr<TemporaryBytes> file_;
  std::uint64_t file_begin_ = 0;  // of what has not been read
  std::uint64_t file_size_ = 0;   // of what has not been read, with `unwritten_`
  std::string unwritten_;         // the end of the file
};

}  // namespace signals

#endif
