// What a filter has to do, as it is typed at `veltane estimate`.
#ifndef VELTANE_CLI_REQUIREMENTS_H
#define VELTANE_CLI_REQUIREMENTS_H

#include "analysis/estimate.h"
#include "options.h"

namespace cli {

struct Requirements {
  analysis::Demand demand; /**< edges as fractions of the Nyquist frequency */
  analysis::Band band;
  double samplerate; /**< in Hz */
  bool hertz;        /**< whether edges are typed and shown in Hz, not as fractions */
  double unit;       /**< of an edge that is typed, as a fraction of the Nyquist frequency */
  std::vector<double> passband; /**< edges as they are typed */
  std::vector<double> stopband;
};

/** The options that make a demand. */
class RequirementsOptions {
 public:
  /** Adds them to `options`, which must live as long as this. */
  explicit RequirementsOptions(Options &options);

  /** Reads them once they are parsed. Raises Refusal with what is wrong. */
  Requirements requirements() const;

 private:
  const Option &passband_, &stopband_, &ripple_, &attenuation_, &samplerate_, &units_;
};

/** @return the demand in one line. */
std::string to_sentence(const Requirements &requirements);

}  // namespace cli

#endif
