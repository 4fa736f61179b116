// Reading the command line.
#ifndef VELTANE_CLI_ARGUMENTS_H
#define VELTANE_CLI_ARGUMENTS_H

#include <filesystem>
#include <string>
#include <vector>

#include "design.h"

namespace cli {

using Words = std::vector<std::string>;

/** A question that is answered by a text alone, such as --help: exit status 0. */
struct Answer {
  std::string text;
};

/** What the command line says before it comes to a subcommand's options. */
struct Command {
  std::string subcommand;
  Words rest;
  std::filesystem::path module; /**< empty when none is named */
};

struct DesignRequest {
  Settings settings;
  std::string format; /**< "text" or "json" */
};

/** Reads the subcommand and the module. Raises Refusal or Answer. */
Command parse_command(const Words &arguments);

/**
 * Reads the options of `veltane design`: one for each attribute, named as it
 * is, with hyphens or underscores. Raises Refusal or Answer.
 */
DesignRequest parse_design(const Words &rest,
                           const std::vector<patchbay::AttributeInfo> &attributes);

}  // namespace cli

#endif
