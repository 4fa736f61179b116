// What `veltane check` finds out about a filter, and how it is told.
#ifndef VELTANE_CLI_VERDICT_H
#define VELTANE_CLI_VERDICT_H

#include <string>
#include <vector>

#include "json_text.h"

namespace cli {

enum class Weight {
  fact,
  note,   /**< worth knowing before it surprises */
  problem /**< the filter, or a form of it that was asked for, is not what was asked for */
};

struct Finding {
  std::string about; /**< what it is about, such as "cutoff"; programs rely on these words */
  Weight weight;
  std::string text;
  std::string change; /**< what to change; every problem has it */
};

/** All that was found, in the order in which it was looked at. */
struct Verdict {
  std::string title;
  std::vector<Finding> findings;
  Json measured = Json::object(); /**< the numbers behind the findings, by name */

  void fact(const std::string &about, const std::string &text);
  void note(const std::string &about, const std::string &text, const std::string &change);
  void problem(const std::string &about, const std::string &text, const std::string &change);

  /** @return how many problems there are; without one the filter is sound. */
  std::size_t problems() const;
};

/** A page: the verdict, the problems and what to change, the notes, the facts. */
std::string to_text_page(const Verdict &verdict);

/**
 * {"veltane": version, "command": [...], "sound": true or false, "title": "...",
 * "findings": [{"about", "weight", "text", "change"}, ...], "measured": {...}}: "weight" is
 * fact, note or problem, "change" is empty where nothing is to be changed. What is measured
 * and not finite is null.
 */
std::string to_json(const Verdict &verdict, const std::vector<std::string> &command);

}  // namespace cli

#endif
