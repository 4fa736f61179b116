// A filter on its way into another program's layout: what every target writes,
// and the table of targets.
#ifndef VELTANE_CLI_EXPORT_EXPORT_H
#define VELTANE_CLI_EXPORT_EXPORT_H

#include <span>
#include <string>

#include "analysis/filter.h"
#include "subcommand.h"

namespace cli {

/** What goes into the file. */
struct Export {
  std::string title;           /**< the settings on one line */
  double samplerate = 0.0;     /**< in Hz */
  Invocation invocation;       /**< what makes the file again */
  std::string identifier;      /**< what the filter is called in the file: letters, digits
                                    and single underscores, never a word of a language */
  Words gain;                  /**< sentences that say how it was scaled */
  Words remarks;               /**< sentences that a user of the file has to know */
  analysis::Sections sections; /**< finite, at least one, none silent; for a target with
                                    floats each coefficient is a float's value */
};

/** A program or language, and how a filter is written for it. */
struct Target {
  const char *name;
  const char *summary; /**< one line, for the help */
  bool floats;         /**< whether it holds coefficients in single precision */
  bool cascade;        /**< whether it takes the sections one by one */

  /** @return the whole file. Raises Refusal when the layout cannot hold the filter. */
  std::string (*write)(const Export &filter);
};

std::span<const Target> targets();

/** Raises Refusal, which lists the targets, when there is none of this name. */
const Target &target_named(const std::string &name);

/**
 * The comment that every file begins with: settings, equation, sign of the feedback
 * terms, sample rate, scaling, the command.
 * @param prefix  what begins a comment, such as "# "
 * @param layout  lines that say how this file holds the coefficients, and how to use it
 */
std::string comment(const Export &filter, const std::string &prefix, const Words &layout);

/** @return the sentences of the comment that are the same for all targets with `a1` and
 *  `a2` as designed: the equation in z and in time, and the sign. */
Words subtracted_feedback();

/** @return the same for targets that add the feedback terms: they hold -a1 and -a2. */
Words added_feedback();

/** @return ASCII letters in upper case. */
std::string upper_case(std::string text);

/** A number with 17 significant digits, and with a point or an exponent. */
std::string double_text(double value);

/** The same with 9, which are enough for any float. */
std::string float_text(double value);

/**
 * The five coefficients of each section as text, separated by commas.
 * @param negated  whether the feedback terms change their sign
 */
std::string coefficient_list(const analysis::Section &section, std::string (*text)(double),
                             bool negated);

std::string to_scipy(const Export &filter);
std::string to_octave(const Export &filter);
std::string to_c(const Export &filter);
std::string to_c_float(const Export &filter);
std::string to_cpp(const Export &filter);
std::string to_cpp_float(const Export &filter);
std::string to_cmsis(const Export &filter);
std::string to_webaudio(const Export &filter);
std::string to_webaudio_sections(const Export &filter);
std::string to_faust(const Export &filter);
std::string to_csound(const Export &filter);
std::string to_supercollider(const Export &filter);
std::string to_csv(const Export &filter);
std::string to_sections_json(const Export &filter);

}  // namespace cli

#endif
