// Settings in, a design out: boxes of the class `veltane`, made in patchbay with the real module.
#ifndef DESIGNER_DESIGNER_H
#define DESIGNER_DESIGNER_H

#include <filesystem>
#include <string>
#include <vector>

#include "designer/limits.h"
#include "designer/settings.h"
#include "patchbay/host.h"

namespace designer {

/** What came out of a box. */
struct Design {
  Settings settings;               /**< all attributes in their order, as the box holds them */
  patchbay::Dictionary dictionary; /**< what it published */
  std::vector<std::string>
      remarks; /**< a sentence for each setting that was changed, and what the box posted */
  double samplerate = 0.0; /**< in Hz, the one that the design is for */
};

/** A host with the module. As one host lives in a process at a time, so does one designer, and it
 *  belongs to the thread that made it. */
class Designer {
 public:
  /**
   * @param module    the file
   * @param checking  whether the host watches the module's blocks of memory: what is designed is the
   *                  same, and takes a little longer under a strict host
   * Raises Refusal when the file is missing or has no class `veltane`.
   */
  explicit Designer(const std::filesystem::path &module,
                    patchbay::Checking checking = patchbay::Checking::strict);

  /** The same for a module that is linked into the program, by its `ext_main`. */
  explicit Designer(void (*ext_main)(), patchbay::Checking checking = patchbay::Checking::strict);

  /** @return what the class declares of its attributes, in their order. */
  const std::vector<patchbay::AttributeInfo> &attributes() const { return attributes_; }

  /** @return the range of an attribute. Raises std::runtime_error if it does not have one. */
  Range range(const std::string &attribute) const;

  /** Sets the rate of the audio, in Hz, at least 1: that of filters whose settings give no rate.
   *  `audio_samplerate` at first. */
  void set_audio_rate(double rate) { audio_rate_ = rate; }

  /** @return the settings of a box created without any, at `audio_samplerate`; its name is not a free one. */
  Settings fresh();

  /**
   * Settings as a box holds them: within the module's ranges, of its choices, and complete.
   * @return a design without a dictionary
   * Raises Refusal if a value does not fit, or a setting does not exist.
   */
  Design accepted(const Settings &requested);

  /**
   * Makes a box, gives it the settings, bangs it, and frees it.
   * Raises Refusal as `accepted`, std::bad_alloc when the box had no memory to design, and
   * std::runtime_error when it published nothing for another reason.
   */
  Design design(const Settings &requested);

  /** @return the attributes that a box with these settings shows as out of use, in their order.
   *  Raises as `accepted`. */
  std::vector<std::string> out_of_use(const Settings &requested);

  /** Frees and unloads all; further calls of anything else raise patchbay::Error.
   *  @return what broke the host's rules, a sentence each */
  std::vector<std::string> close() { return host_.close(); }

 private:
  class Box;

  template <typename Module>
  void load(Module module);

  /** What a box's settings are held against, read once. */
  struct Rule {
    Values choices; /**< the words that it takes; empty where it takes others */
    bool is_switch;
  };

  patchbay::Host host_;
  std::vector<patchbay::AttributeInfo> attributes_;
  std::vector<Rule> rules_;  // of each attribute
  double audio_rate_ = audio_samplerate;
};

}  // namespace designer

#endif
