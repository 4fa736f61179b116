// The options that say which filter is meant, the same for all subcommands.
#ifndef VELTANE_CLI_SETTINGS_OPTIONS_H
#define VELTANE_CLI_SETTINGS_OPTIONS_H

#include <string>
#include <utility>
#include <vector>

#include "design.h"
#include "options.h"

namespace cli {

/**
 * One option for each attribute of the module, and --module and --from. They
 * belong to `options`, which must live as long as this.
 */
class SettingsOptions {
 public:
  /** Adds them; their help tells what a new box of `host` has. */
  SettingsOptions(Options &options, patchbay::Host &host);

  /**
   * @return what was asked for, once the options are parsed, in the order of the
   *         attributes: the settings of the design that --from names, and those
   *         given beside it instead of its own.
   * Raises Refusal.
   */
  Settings settings() const;

  /** @return whether --from reads standard input, which nothing else can read then. */
  bool reads_standard_input() const;

  /** @return whether the attribute was given itself, not only by --from. */
  bool typed(const std::string &name) const;

 private:
  void check_attribute(const std::string &name) const;

  std::vector<std::pair<patchbay::AttributeInfo, const Option *>> attributes_;
  const Option *from_ = nullptr;
};

}  // namespace cli

#endif
