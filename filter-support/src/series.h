// Models that are a series of sections.
#ifndef FILTERMATH_SRC_SERIES_H
#define FILTERMATH_SRC_SERIES_H

#include <cstdint>
#include <vector>

#include "filtermath/statespace.h"
#include "owners.h"

namespace filtermath {

/** One section of a series: which states of the whole model are its, and a model of its own. */
struct Section {
  std::vector<int32_t> states;
  Statespace model;
};

/** Sections, the first driven by the input and each other one by the one before it. */
using Series = std::vector<Section>;

/**
 * Takes a model apart that is a series of two or more sections, each a component of A.
 * Every number of the model is held against the product that a series has there, to
 * within a few roundings for each of its factors. Time grows with the square of the
 * number of states.
 * @param ss  a one-input, one-output model
 * @return nothing if A is a single component or the model no such series
 */
Series sections_of(const _statespace *ss);

/** Makes `ss` the model of a series, reshaping it: the inverse of `sections_of`. */
void connect(const Series &series, _statespace *ss);

/**
 * Transforms a model in place: each section by itself if it is a series, which keeps
 * digits that the whole loses.
 * @param transform  of a `_statespace *`; the same to a series as to its sections
 */
template <typename Transform>
void transform_sections(_statespace *ss, const Transform &transform) {
  Series series = sections_of(ss);
  if (series.empty()) return transform(ss);
  for (Section &section : series) transform(section.model);
  connect(series, ss);
}

}  // namespace filtermath

#endif
