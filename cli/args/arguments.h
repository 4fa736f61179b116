// What was typed after a subcommand.
#ifndef CLI_ARGS_ARGUMENTS_H
#define CLI_ARGS_ARGUMENTS_H

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "args/option.h"
#include "base/words.h"

namespace cli {

/** The values of options, and the operands. If something does not fit, functions raise
 *  designer::Refusal. */
class Arguments {
 public:
  /** @param values    of each option that was given
   *  @param operands  the words that belong to no option */
  explicit Arguments(std::map<const Option *, Words> values, Words operands = {})
      : values_(std::move(values)), operands_(std::move(operands)) {}

  /** @return whether an option was given. */
  bool given(const Option &option) const { return values_.contains(&option); }

  /** @return its only value; none if it was not given. Raises unless there is exactly one. */
  std::optional<std::string> value(const Option &option) const;

  /** @return its value, or the first choice if it was not given. Raises if it is not one of the
   *          choices. */
  std::string choice(const Option &option) const;

  /** @return its values, none if it was not given. Raises if it was given without a value, or with
   *          more than it takes. */
  Words values(const Option &option) const;

  /** @return the words that belong to no option, in their order: no more than the subcommand
   *          takes. */
  const Words &operands() const { return operands_; }

  /** @return the first of them, if one was given. */
  std::optional<std::string> operand() const {
    return operands_.empty() ? std::nullopt : std::optional(operands_.front());
  }

 private:
  std::map<const Option *, Words> values_;
  Words operands_;
};

}  // namespace cli

#endif
