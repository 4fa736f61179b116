/**
 * Signals that come and go in blocks, however long they are.
 *
 * A frame is one sample of each channel. Blocks hold whole frames, one after the other. What cannot
 * be used is refused with designer::Refusal, in one sentence that names the signal; where something
 * else fails, such as the disk, it is a std::runtime_error.
 */
#ifndef SIGNALS_STREAM_H
#define SIGNALS_STREAM_H

#include <cstddef>
#include <cstdint>
#include <span>

namespace signals {

/** Where a signal comes from. */
class Source {
 public:
  Source() = default;
  virtual ~Source() = default;
  Source(const Source &) = delete;
  Source &operator=(const Source &) = delete;

  /** @return at least 1. */
  virtual std::size_t channels() const = 0;

  /** @return in Hz; 0 where the signal does not say. */
  virtual double samplerate() const = 0;

  /** @return how much of it has been read, from 0 to 1; below 0 where its length is not known. */
  virtual double fraction() const = 0;

  /**
   * Reads the next frames; waits for at least one.
   * @param frames  room for whole frames, at least one
   * @return how many frames there were, all of them finite; 0 at the end, and only there
   * Raises designer::Refusal when the signal is damaged, ends before it said it would, or has a
   * sample that is not finite.
   */
  virtual std::size_t read(std::span<double> frames) = 0;
};

/** Where a signal goes. */
class Sink {
 public:
  Sink() = default;
  virtual ~Sink() = default;
  Sink(const Sink &) = delete;
  Sink &operator=(const Sink &) = delete;

  /** Writes whole frames. @return false when nobody reads them any more. Raises std::runtime_error
   *  when they cannot be written. */
  virtual bool write(std::span<const double> frames) = 0;

  /** Writes what follows the last frame. Raises as `write`. */
  virtual void finish() = 0;

  /** @return how many samples had to be limited to what the format holds. */
  virtual std::uint64_t clipped() const { return 0; }
};

}  // namespace signals

#endif
