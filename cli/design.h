// Running one box: from requested settings to what it published.
#ifndef VELTANE_CLI_DESIGN_H
#define VELTANE_CLI_DESIGN_H

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "patchbay/host.h"

namespace cli {

/** A request that was wrong: exit status 2. Its text is one sentence. */
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/** Settings in the order in which they were given, by attribute name. */
using Settings = std::vector<std::pair<std::string, patchbay::Values>>;

/** What came out of a box. */
struct Design {
  Settings settings;                /**< all attributes, as the box holds them */
  patchbay::Dictionary dictionary;  /**< what it published */
  std::vector<std::string> remarks; /**< settings changed on the way, and what the
                                         box posted */
  double samplerate;                /**< in Hz, the one that the design is for */
};

/**
 * Makes a box of the class `veltane`, gives it the settings and bangs it.
 * @param requested  values as texts, no more than the attributes have room for
 * Raises Refusal when a value does not fit, and std::runtime_error when the box
 * published nothing.
 */
Design run_design(patchbay::Host &host, const Settings &requested);

}  // namespace cli

#endif
