// A designed filter, and what it is asked for.
#ifndef PYTHON_FILTER_H
#define PYTHON_FILTER_H

#include <optional>
#include <string>
#include <vector>

#include "designer/designer.h"
#include "designer/published_filter.h"
#include "values.h"

namespace python {

/** A filter with the settings that made it. It is a value of its own and needs the designer again
 *  only for what it is asked for later; nothing is computed or copied before that. */
class Filter {
 public:
  /** Designs it. Raises as designer::Designer::design does. */
  explicit Filter(designer::Settings requested);

  const designer::Settings &requested() const { return requested_; }
  const designer::Design &design() const { return design_; }

  /** @return what was published, with zeros, poles, gain and sections. */
  const designer::PublishedFilter &published() const;

  /** @return the published transfer function, designed when it is first asked for. */
  const analysis::Transfer &transfer() const;

  /** @return the sections in the order in which they round least. */
  const analysis::Sections &arranged() const;

 private:
  designer::Settings requested_;
  designer::Design design_;
  mutable std::optional<designer::PublishedFilter> published_;
  mutable std::optional<analysis::Transfer> transfer_;
  mutable std::optional<analysis::Sections> arranged_;
};

/** How a layout is written. */
struct ExportWishes {
  bool normalise;
  bool as_published;
  bool spread_gain;
  bool anyway;
  std::optional<std::string> structure;
  std::optional<std::string> name; /**< of the filter in the file */
};

/** What was written, and remarks about it. */
struct Exported {
  std::string text;
  std::vector<std::string> remarks;
};

/** Writes it in the layout of another program, with the bytes that the command writes.
 *  Raises designer::Refusal as layouts::write does. */
Exported exported(const Filter &filter, const std::string &target, const ExportWishes &wishes);

/** @return the verdict as the members of verdict.Verdict: title, findings, measured. */
py::tuple verdict_on(const Filter &filter);

/** @param frequencies  in Hz, from 0 to the Nyquist frequency, which is checked
 *  @return h, level in dB, phase in degrees, group delay in samples */
py::tuple response_of(const Filter &filter, const Doubles &frequencies);

/** A curve of the level to be drawn, with its ranges.
 *  @return frequencies in Hz, levels in dB (NaN where interrupted), and the lowest and the highest
 *  of each that are shown */
py::tuple level_curve_of(const Filter &filter);

/** Filters signals from rest. @param frames  frames by channels; @return as many */
py::array_t<double> applied(const Filter &filter, const Doubles &frames);

/** The same forwards and backwards, see signals::ZeroPhase. */
py::array_t<double> applied_in_both_directions(const Filter &filter, const Doubles &frames);

/** The filters that meet a demand. @param topology  one family alone, or all where it is None
 *  @return a tuple of candidates as the members of estimate.Candidate */
py::list estimated(const std::vector<double> &passband, const std::vector<double> &stopband,
                   double ripple, double attenuation, double samplerate,
                   const std::optional<std::string> &topology);

}  // namespace python

#endif
