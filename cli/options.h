// The options of a subcommand: reading them, and their help.
#ifndef VELTANE_CLI_OPTIONS_H
#define VELTANE_CLI_OPTIONS_H

#include <memory>
#include <optional>
#include <string>

#include "subcommand.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace cli {

/** One option, and what was given to it. */
class Option {
 public:
  /** @return whether it was given. */
  bool given() const;

  /** @return its only value; none when it was not given. Raises Refusal when
   *  there is not exactly one. */
  std::optional<std::string> value() const;

  /** @return its value, or `otherwise` when it was not given. Raises Refusal when
   *  it is none of the choices. */
  std::string choice(const Words &choices, const std::string &otherwise) const;

  /** @return its values, none when it was not given. Raises Refusal when it was
   *  given and there are none, or more than it takes. */
  Words values() const;

 private:
  friend class Options;
  std::string name_;  // as it is shown: --order
  std::size_t maximum_ = 1;
  Words values_;
  const CLI::Option *option_ = nullptr;
};

/**
 * The options of a subcommand. Names are given with hyphens, and may be typed
 * with underscores.
 */
class Options {
 public:
  /** As many values as are given. */
  static constexpr std::size_t any_number = static_cast<std::size_t>(-1);

  /**
   * @param name         such as "veltane design"
   * @param description  what it does, for the help
   * @param examples     command lines for the help, which work one after the other
   *                     in an empty folder
   */
  Options(const std::string &name, const std::string &description, const Words &examples);
  ~Options();
  Options(const Options &) = delete;
  Options &operator=(const Options &) = delete;

  /**
   * Adds an option.
   * @param names    "--order", or "-o,--output"
   * @param value    what its value is called in the help, such as "FILE"
   * @param help     what it does, its choices, range and unit
   * @param maximum  how many values it takes, at least one
   * @return the option, which lives as long as this
   */
  const Option &add(const std::string &names, const std::string &value, const std::string &help,
                    std::size_t maximum = 1);

  /** Adds an option without a value. @return as `add` */
  const Option &add_switch(const std::string &names, const std::string &help);

  /** Adds a text at the end of the help: paragraphs with an empty line between
   *  them. */
  void append_help(const std::string &text);

  /** Reads the words that follow the subcommand. Raises Refusal, and Answer for
   *  --help; for --man alone as well, with manual_section of all this. */
  void parse(const Words &words);

 private:
  void show_footer();

  struct Parts;
  std::unique_ptr<Parts> parts_;
};

/**
 * Takes an option with one value out of the words, for what must be known
 * before the other options are.
 * @return its value, empty when it is not there. Raises Refusal when it has not
 *         exactly one value.
 */
std::string take_option(Words &words, const std::string &name);

}  // namespace cli

#endif
