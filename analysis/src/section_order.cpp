#include "section_order.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace analysis {
namespace {

// The search takes 2^width products a window. Wider windows gain less than a decibel; with many
// sections, whose products are longer as well, narrower ones keep the time within milliseconds.
std::size_t window_width(std::size_t sections) {
  return std::min<std::size_t>(sections, sections <= 48 ? 8 : 6);
}

// Few orders still change in the sixth.
constexpr int most_rounds = 6;

// An order that gains less might be the same one, judged with other rounding errors.
constexpr double worthwhile = 1.0 - 1e-3;

/**
 * Finds the best order within one window of consecutive sections after another. How noisy a place
 * is depends on which sections are before it, not on their order; so the best order of a set of
 * sections ends with one of them, after the best order of the others.
 */
class WindowSearch {
 public:
  WindowSearch(Order start, const std::vector<GridLevels> &levels)
      : levels_(levels),
        order_(std::move(start)),
        width_(window_width(order_.size())),
        silence_(levels.front().size(), 0.0F),
        whole_(silence_),
        sets_(std::size_t{1} << width_) {
    for (const GridLevels &section : levels_) add_levels(whole_, section);
    peak_ = highest(whole_);
    sets_.front().noise = 0.0;
  }

  void improve() {
    const std::size_t last = order_.size() - width_;
    const std::size_t step = std::max<std::size_t>(1, width_ / 2);
    for (int round = 0; round < most_rounds; ++round) {
      bool changed = false;
      GridLevels before = silence_;
      for (std::size_t first = 0;;) {
        changed = improve_window(first, before) || changed;
        if (first == last) break;
        const std::size_t next = std::min(first + step, last);
        for (; first < next; ++first) add_levels(before, levels_[order_[first]]);
      }
      // One window that holds all sections has found the best order.
      if (!changed || last == 0) break;
    }
  }

  const Order &order() const { return order_; }

  /** The sum over all places. */
  double noise() const {
    GridLevels product = silence_;
    double sum = 0.0;
    for (const std::size_t section : order_) {
      add_levels(product, levels_[section]);
      sum += noise_behind(product);
    }
    return sum;
  }

 private:
  /** A set of sections of the window, which are the bits of its place in the list. */
  struct Set {
    GridLevels product;   /**< of all before the window and these */
    double noise = 0.0;   /**< of the best order of these, behind each of them */
    std::size_t last = 0; /**< which of the window comes last in it */
  };

  // Of the place behind a product, relative to that of the whole filter.
  double noise_behind(const GridLevels &product) const {
    std::array<GridLevel, level_lanes> before, behind;
    before.fill(std::numeric_limits<GridLevel>::lowest());
    behind.fill(std::numeric_limits<GridLevel>::lowest());
    // A maximum in each lane, since the compiler may not reorder a maximum over all.
    for (std::size_t start = 0; start < product.size(); start += level_lanes)
      for (std::size_t lane = 0; lane < level_lanes; ++lane) {
        const GridLevel level = product[start + lane];
        const GridLevel rest = whole_[start + lane] - level;
        before[lane] = before[lane] > level ? before[lane] : level;
        behind[lane] = behind[lane] > rest ? behind[lane] : rest;
      }
    const GridLevel excess = *std::max_element(before.begin(), before.end()) +
                             *std::max_element(behind.begin(), behind.end()) - peak_;
    return std::exp2(2.0 * static_cast<double>(excess));
  }

  // The best order of a set, from those of the sets with one section less.
  void complete(Set &set, std::size_t members) const {
    set.last = static_cast<std::size_t>(std::countr_zero(members));
    set.noise = sets_[members & (members - 1)].noise;
    for (std::size_t i = set.last + 1; members >> i != 0; ++i) {
      const std::size_t bit = std::size_t{1} << i;
      if ((members & bit) == 0 || !(sets_[members ^ bit].noise < set.noise)) continue;
      set.last = i;
      set.noise = sets_[members ^ bit].noise;
    }
    set.noise += noise_behind(set.product);
  }

  bool improve_window(std::size_t first, const GridLevels &before) {
    const auto section = [&](std::size_t i) { return order_[first + i]; };
    sets_.front().product = before;
    for (std::size_t members = 1; members < sets_.size(); ++members) {
      Set &set = sets_[members];
      const auto lowest = static_cast<std::size_t>(std::countr_zero(members));
      set.product = sets_[members & (members - 1)].product;
      add_levels(set.product, levels_[section(lowest)]);
      complete(set, members);
    }

    double now = 0.0;
    for (std::size_t i = 0; i < width_; ++i)
      now += noise_behind(sets_[(std::size_t{2} << i) - 1].product);
    if (!(sets_.back().noise < now * worthwhile)) return false;

    Order best(width_);
    std::size_t members = sets_.size() - 1;
    for (std::size_t i = width_; i-- > 0;) {
      best[i] = section(sets_[members].last);
      members ^= std::size_t{1} << sets_[members].last;
    }
    std::copy(best.begin(), best.end(), order_.begin() + static_cast<std::ptrdiff_t>(first));
    return true;
  }

  const std::vector<GridLevels> &levels_;
  Order order_;
  std::size_t width_;
  GridLevels silence_, whole_;
  std::vector<Set> sets_;
  GridLevel peak_ = 0.0F;
};

}  // namespace

JudgedOrder quiet_order(Order start, const std::vector<GridLevels> &levels) {
  WindowSearch search(std::move(start), levels);
  search.improve();
  return {search.order(), search.noise()};
}

Order spread_order(const Sections &filter) {
  std::vector<double> angles;
  for (const Section &section : filter)
    angles.push_back(std::arg(quadratic_roots(section.a1, section.a2).front()));
  Order by_angle(filter.size());
  std::iota(by_angle.begin(), by_angle.end(), std::size_t{0});
  std::stable_sort(by_angle.begin(), by_angle.end(),
                   [&](std::size_t a, std::size_t b) { return angles[a] < angles[b]; });

  Order order;
  const std::size_t places = std::bit_ceil(filter.size());
  for (std::size_t i = 0; i < places; ++i) {
    std::size_t mirrored = 0;
    for (std::size_t bit = 1; bit < places; bit *= 2) mirrored = 2 * mirrored + (i & bit ? 1 : 0);
    if (mirrored < by_angle.size()) order.push_back(by_angle[mirrored]);
  }
  return order;
}

}  // namespace analysis
