/** How loud each section is at a few hundred frequencies: what an arrangement is judged by. */
#ifndef ANALYSIS_SECTION_LEVELS_H
#define ANALYSIS_SECTION_LEVELS_H

#include <cstddef>

#include "analysis/filter.h"

namespace analysis {

/** Powers of two: the level of |H| = 8 is 3. Floats, since the search reads them a million times. */
using GridLevel = float;

/** A list of levels, one for each frequency. */
using GridLevels = std::vector<GridLevel>;

/** Lists of levels are multiples of this long, so that all lanes of the processor work. */
inline constexpr std::size_t level_lanes = 8;

/** Frequencies at which the partial products of a cascade have their peaks. */
class LevelGrid {
 public:
  /** Fine: peaks of a product are found within a decibel at any order, at three times the cost. */
  enum class Fineness { coarse, fine };

  /** The angle of each pole, both ends of the axis, and places in between and near its ends. In a
   *  fine grid also the places beside each pole that are as far as it is from the circle. */
  LevelGrid(const Sections &filter, Fineness fineness);

  /** How many levels a list of them has. */
  std::size_t size() const { return points_.size(); }

  /** The share of the axis that each frequency stands for; they add up to 1. */
  const std::vector<double> &shares() const { return shares_; }

  /**
   * log2 |H| of one section at each frequency; far below everything, but finite, at a zero on the
   * circle.
   * Cost: a logarithm a frequency.
   * @param section  with finite coefficients, not all zero, and no pole on the circle
   */
  GridLevels levels(const Section &section) const;

 private:
  struct Point {
    double end;      /**< 1 if z = 1 is nearer, -1 if z = -1 is */
    double distance; /**< 1 - end cos(angle), without cancellation */
    double sin;
  };
  std::vector<Point> points_;
  std::vector<double> shares_;
};

/** The highest of the levels. */
GridLevel highest(const GridLevels &levels);

/** Adds the levels of a section to those of a product. */
void add_levels(GridLevels &product, const GridLevels &section);

}  // namespace analysis

#endif
