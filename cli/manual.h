// The manual page, in the language of troff. It is made of what the help is made of.
#ifndef VELTANE_CLI_MANUAL_H
#define VELTANE_CLI_MANUAL_H

#include <string>
#include <vector>

namespace cli {

struct OptionText {
  std::string names; /**< "-o,--output" */
  std::string value; /**< empty for a switch */
  std::string help;
};

/** What the help of a subcommand says. */
struct HelpText {
  std::string name; /**< such as "veltane design" */
  std::string description;
  std::vector<OptionText> options;
  std::vector<std::string> examples;
  std::string notes; /**< paragraphs with an empty line between them */
};

/** @return the section of one subcommand. */
std::string manual_section(const HelpText &text);

/** @return the page around the sections. */
std::string manual_page(const std::string &sections);

}  // namespace cli

#endif
