// Models that are a series of sections.
#ifndef FILTERMATH_SRC_SERIES_H
#define FILTERMATH_SRC_SERIES_H

#include <cstdint>

#include "components.h"
#include "filtermath/statespace.h"
#include "scratch.h"
#include "shaped.h"

namespace filtermath {

/** One section of a series, with n states: a view of the series' numbers. */
struct Section {
  int32_t n;
  const int32_t *states; /**< which of the whole model's states are its */
  double *a;             /**< n x n, row after row */
  double *b;             /**< n */
  double *c;             /**< n */
  double *d;
};

/**
 * A model taken apart into sections, the first driven by the input and each other one by the
 * one before it. Their numbers are kept together, since there are many small sections.
 */
class Series {
 public:
  Series() = default;
  /** Sections without numbers, for the states of each set. */
  Series(Components parts, Scratch *memory);
  Series(Series &&) = default;
  Series &operator=(Series &&) = delete;

  const Components &components() const { return parts_; }
  const List<Section> &sections() const { return sections_; }

 private:
  Components parts_;
  List<double> numbers_;
  List<Section> sections_;
};

/**
 * Takes a model apart that is a series of two or more sections, each a component of A.
 * Every number of the model is held against the product that a series has there, to
 * within a few roundings for each of its factors. Time grows with the square of the
 * number of states.
 * @param ss      a one-input, one-output model
 * @param memory  of the series, for as long as it lives
 * @return no sections if A is a single component or the model not such a series
 */
Series sections_of(const _statespace *ss, Scratch *memory = nullptr);

/** Makes `ss` the model of a series, reshaping it: the inverse of `sections_of`. */
void connect(const Series &series, _statespace *ss);

/** Makes `ss` the model of one section, reshaping it. */
void load(const Section &section, _statespace *ss);

/** Gives a section the numbers of a model with as many states. */
void store(const _statespace *ss, const Section &section);

/**
 * Transforms a model in place: each section by itself if it is a series, which keeps
 * digits that the whole loses.
 * @param transform  of a `_statespace *`; the same to a series as to its sections, and
 *                   leaves the shape of each matrix as it is
 */
template <typename Transform>
void transform_sections(_statespace *ss, Transform &&transform) {
  Scratch scratch;
  const Series series = sections_of(ss, &scratch);
  if (series.sections().empty()) return transform(ss);
  for (const Section &section : series.sections()) {
    ShapedModel part(section.n);
    load(section, part);
    transform(part);
    store(part, section);
  }
  connect(series, ss);
}

}  // namespace filtermath

#endif
