/** Filtering forwards and backwards, which leaves no phase and no delay. */
#ifndef SIGNALS_ZERO_PHASE_H
#define SIGNALS_ZERO_PHASE_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "analysis/filter.h"
#include "signals/cascade.h"

namespace signals {

class FrameStore;

/**
 * @return how many frames the signal is continued by at either end before it is filtered in both
 *         directions: 3 (2 n + 1) for n sections, of which first-order sections count half, which is
 *         what SciPy's `sosfiltfilt` takes unless it is told otherwise
 */
std::size_t edge_frames(const analysis::Sections &sections);

/**
 * A signal through a filter, and its reverse through it again: levels in dB count twice, and the
 * delays of both ways cancel. At both ends the signal is continued by its point reflection in the
 * last sample, and each way begins in the state of a signal that had always been as it begins,
 * so that a constant stays what it is. The filter has to be stable.
 *
 * First `add` the whole signal, then `turn`, then `read` until nothing comes. The signal waits in a
 * temporary file of 8 bytes a sample; memory does not grow with it. Raises std::runtime_error where
 * that file cannot be written or read.
 *
 * Cost: twice that of `Cascade`, and the signal is written to a file twice.
 * Accuracy: that of the recursion in doubles; SciPy's `sosfiltfilt` agrees within 1e-9 of the peak.
 * Source: Gustafsson, "Determining the initial states in forward-backward filtering", IEEE
 * Transactions on Signal Processing 44 (1996), section I, for the simple way that this is.
 */
class ZeroPhase {
 public:
  ZeroPhase(const analysis::Sections &sections, std::size_t channels);
  ~ZeroPhase();
  ZeroPhase(const ZeroPhase &) = delete;
  ZeroPhase &operator=(const ZeroPhase &) = delete;

  /** Takes the next frames of the signal, and filters them forwards. */
  void add(std::span<const double> frames);

  /**
   * Ends the signal, and filters it backwards.
   * @param progress  called now and then with the part that is done, from 0 to 1
   * Raises designer::Refusal when the signal is not longer than `edge_frames`.
   */
  void turn(const std::function<void(double)> &progress);

  /** @param frames  room for whole frames
   *  @return how many of the next frames of the result there were; 0 at its end */
  std::size_t read(std::span<double> frames);

 private:
  void begin();
  void forwards(std::vector<double> frames);

  std::size_t channels_;
  std::size_t edge_;
  Cascade cascade_;
  std::unique_ptr<FrameStore> store_;
  bool begun_ = false;
  std::vector<double> last_;  // the frames that an end is continued by, and the one that it is
                              // reflected in; of both ends of a short signal
  std::uint64_t frames_ = 0;  // added
  std::uint64_t at_ = 0;      // read
};

}  // namespace signals

#endif
