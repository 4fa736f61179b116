// Running one box: from requested settings to what it published.
#ifndef VELTANE_CLI_DESIGN_H
#define VELTANE_CLI_DESIGN_H

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "patchbay/host.h"
#include "subcommand.h"

namespace cli {

/** Settings in the order in which they were given, by attribute name. */
using Settings = std::vector<std::pair<std::string, patchbay::Values>>;

/** What came out of a box. */
struct Design {
  Settings settings;                /**< all attributes, as the box holds them */
  patchbay::Dictionary dictionary;  /**< what it published */
  std::vector<std::string> remarks; /**< settings changed on the way, and what the
                                         box posted */
  double samplerate = 0.0;          /**< in Hz, the one that the design is for */
};

/** Where the module finds its sample rate when its settings do not say one, in Hz. */
constexpr double audio_samplerate = 48000.0;

/** Loads the module. Raises Refusal when it is not there, or is no veltane. */
void load_module(patchbay::Host &host, const std::filesystem::path &module);

/**
 * Settings as a box of the class `veltane` holds them: within the module's ranges, of its choices,
 * and complete.
 * @param requested  values, which may all be texts
 * @return a design without a dictionary
 * Raises Refusal when a value does not fit.
 */
Design accepted(patchbay::Host &host, const Settings &requested);

/**
 * Makes a box of the class `veltane`, gives it the settings, bangs it, and
 * frees it.
 * @param requested  values, which may all be texts
 * Raises Refusal when a value does not fit, std::bad_alloc when the box had no memory to
 * design, and std::runtime_error when it published nothing for another reason.
 */
Design run_design(patchbay::Host &host, const Settings &requested);

}  // namespace cli

#endif
