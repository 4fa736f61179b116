// Whether a filter is what its settings ask for: what was found, in words and measures.
#ifndef VERDICT_VERDICT_H
#define VERDICT_VERDICT_H

#include <cstddef>
#include <string>
#include <vector>

#include "text/json.h"
#include "verdict/filter_under_test.h"

namespace verdict {

enum class Weight {
  fact,
  note,   /**< worth knowing before it surprises */
  problem /**< the filter, or a form of it that was asked for, is not what was asked for */
};

struct Finding {
  std::string about; /**< what it is about, such as "cutoff"; programs rely on these words */
  Weight weight;
  std::string text;   /**< one line, without a full stop */
  std::string change; /**< what to change; present for every problem and note, empty for facts */
};

/** What was found, in the order of the checks. */
struct Findings {
  std::vector<Finding> list;
  text::Json measured = text::Json::
      object(); /**< the numbers behind the findings, by name; values that are not finite included */

  void fact(const std::string &about, const std::string &text);
  void note(const std::string &about, const std::string &text, const std::string &change);
  void problem(const std::string &about, const std::string &text, const std::string &change);

  /** Appends other findings, and what was measured for them. */
  Findings &operator+=(const Findings &others);
};

struct Verdict {
  std::string title; /**< the filter in one line */
  Findings findings;

  /** @return the number of problems; the filter is sound if there are none. */
  std::size_t problems() const;
};

/**
 * Makes all checks: the settings as they were asked for and as they were used, and whether the
 * filter works at all; then, for one that does and has a band, the levels it reaches, whether its
 * forms are the same filter, and whether its sections can be rounded to single precision.
 *
 * Pure: nothing is designed. Time grows with the square of the order, that of the search for the
 * highest and lowest levels. Levels are as accurate as analysis/response.h says; stability is
 * judged from the coefficients as they are.
 * @param filter  with numbers of any kind, such as those of a file that somebody changed
 */
Verdict judge(const FilterUnderTest &filter);

}  // namespace verdict

#endif
