// What a filter has to do, as it is typed at `veltane estimate`.
#ifndef VELTANE_CLI_SPECIFICATION_H
#define VELTANE_CLI_SPECIFICATION_H

#include "analysis/estimate.h"
#include "options.h"

namespace cli {

struct Specification {
  analysis::Demand demand; /**< edges as fractions of the Nyquist frequency */
  analysis::Band band;
  double samplerate; /**< in Hz */
  bool hertz;        /**< whether edges are typed and shown in Hz, not as fractions */
  double unit;       /**< of an edge that is typed, as a fraction of the Nyquist frequency */
  std::vector<double> passband; /**< edges as they are typed */
  std::vector<double> stopband;
};

/** The options that make a specification. */
class SpecificationOptions {
 public:
  /** Adds them to `options`, which must live as long as this. */
  explicit SpecificationOptions(Options &options);

  /** Reads them once they are parsed. Raises Refusal with what is wrong. */
  Specification specification() const;

 private:
  const Option &passband_, &stopband_, &ripple_, &attenuation_, &samplerate_, &units_;
};

/** @return the specification in one line. */
std::string to_sentence(const Specification &specification);

}  // namespace cli

#endif
