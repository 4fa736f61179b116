// Whether a filter is what its settings ask for: what was found, in words and measures.
#ifndef VERDICT_VERDICT_H
#define VERDICT_VERDICT_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "text/json.h"
#include "verdict/filter_under_test.h"

namespace verdict {

enum class Weight {
  fact,
  note,   /**< worth knowing before it surprises */
  problem /**< the filter, or a form of it that was asked for, is not what was asked for */
};

/** What to change. */
struct Change {
  std::string words; /**< one line, without a full stop */
  std::vector<designer::Settings>
      remedies;             /**< what of the words can be said in settings. Any one of them, given
                                 with the settings that were asked for, is enough */
  bool lower_order = false; /**< whether an order that is low enough is a remedy; lower_order.h
                                 finds the highest */

  Change() = default;
  Change(std::string text) : words(std::move(text)) {}
  Change(const char *text) : words(text) {}
  Change(std::string text, std::vector<designer::Settings> settings)
      : words(std::move(text)), remedies(std::move(settings)) {}

  /** @return a change that an order that is low enough makes, too. */
  static Change to_lower_order(std::string words);
};

struct Finding {
  std::string about; /**< what it is about, such as "cutoff"; programs rely on these words */
  Weight weight;
  std::string text; /**< one line, without a full stop */
  Change change;    /**< has words for every problem and note, and none for facts */
};

/** What was found, in the order of the checks. */
struct Findings {
  std::vector<Finding> list;
  text::Json measured = text::Json::
      object(); /**< the numbers behind the findings, by name; values that are not finite included */

  void fact(const std::string &about, const std::string &text);
  void note(const std::string &about, const std::string &text, const Change &change);
  void problem(const std::string &about, const std::string &text, const Change &change);

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
