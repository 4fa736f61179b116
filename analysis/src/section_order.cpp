#include "section_order.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>
#include <utility>

namespace analysis {
namespace {

// The search takes 2^width products a window. Wider windows gain less than a decibel; with many
// sections, whose products are longer as well, narrower ones keep the time within milliseconds.
std::size_t window_width(std::size_t sections) {
  return std::min<std::size_t>(sections, sections <= 48 ? 8 : 6);
}

// What later ones still gain is a tenth of a decibel.
constexpr int most_rounds = 4;

// An order that gains less might be the same one, judged with other rounding errors.
constexpr double worthwhile = 1.0 - 1e-3;

/** |H|^2 at each frequency, as a multiple of something. */
using Powers = std::vector<double>;

// Of a list of levels, its highest being 1. What is as low as `least` counts as that, so that
// products of them are normal numbers, with which processors are fast.
Powers powers_of(const GridLevels &levels, double least) {
  const GridLevel peak = highest(levels);
  Powers powers;
  powers.reserve(levels.size());
  for (const GridLevel level : levels)
    powers.push_back(std::max(least, static_cast<double>(std::exp2(2 * (level - peak)))));
  return powers;
}

constexpr double least_of_section = 1e-25;
constexpr double least_of_product = 1e-37;

/**
 * Finds the best order within one window of consecutive sections after another. How noisy a place
 * is depends on which sections are before it, not on their order; so the best order of a set of
 * sections ends with one of them, after the best order of the others.
 */
class WindowSearch {
 public:
  WindowSearch(Order start, const std::vector<GridLevels> &levels, const LevelGrid &grid)
      : levels_(levels),
        shares_(grid.shares()),
        order_(std::move(start)),
        width_(window_width(order_.size())),
        silence_(grid.size(), 0.0F),
        whole_(silence_),
        sets_(std::size_t{1} << width_) {
    for (const GridLevels &section : levels_) {
      add_levels(whole_, section);
      powers_.push_back(powers_of(section, least_of_section));
    }
    sets_.front() = {Powers(grid.size(), 1.0), 0.0, 0.0, 0};
  }

  void improve() {
    const std::size_t last = order_.size() - width_;
    const std::size_t step = std::max<std::size_t>(1, width_ / 2);
    std::vector<bool> settled(order_.size(), false);  // the window from there has its best order
    for (int round = 0; round < most_rounds; ++round) {
      bool changed = false;
      GridLevels before = silence_;
      for (std::size_t first = 0;;) {
        if (!settled[first] && improve_window(first, before)) {
          changed = true;
          const std::size_t overlap = first < width_ ? 0 : first - width_ + 1;
          for (std::size_t i = overlap; i < std::min(first + width_, settled.size()); ++i)
            settled[i] = false;
        }
        settled[first] = true;
        if (first == last) break;
        const std::size_t next = std::min(first + step, last);
        for (; first < next; ++first) add_levels(before, levels_[order_[first]]);
      }
      if (!changed) break;
    }
  }

  const Order &order() const { return order_; }

  /** The sum over all places. */
  double noise() const {
    const GridLevel peak = highest(whole_);
    GridLevels before = silence_;
    double sum = 0.0;
    for (const std::size_t section : order_) {
      add_levels(before, levels_[section]);
      const GridLevels behind = rest(before);
      const Powers powers = powers_of(behind, 0.0);
      const double excess =
          static_cast<double>(highest(before)) + static_cast<double>(highest(behind) - peak);
      sum += std::exp2(2.0 * excess) *
             std::inner_product(powers.begin(), powers.end(), shares_.begin(), 0.0);
    }
    return sum;
  }

 private:
  /** A set of sections of the window, which are the bits of its place in the list. */
  struct Set {
    Powers product;
    double noise_behind = 0.0; /**< of the place behind all of these, whatever their order */
    double noise = 0.0;        /**< of the best order of these, behind each of them */
    std::size_t last = 0;      /**< which of the window comes last in it */
  };

  GridLevels rest(const GridLevels &product) const {
    GridLevels levels = whole_;
    for (std::size_t i = 0; i < levels.size(); ++i) levels[i] -= product[i];
    return levels;
  }

  // The peak of before * first, times the sum of behind * second.
  static double noise_between(const Powers &before, const Powers &first, const Powers &behind,
                              const Powers &second) {
    // One for each lane, since the compiler may not reorder maxima and sums.
    std::array<double, level_lanes> peak{}, sum{};
    for (std::size_t start = 0; start < before.size(); start += level_lanes)
      for (std::size_t lane = 0; lane < level_lanes; ++lane) {
        const std::size_t i = start + lane;
        const double level = before[i] * first[i];
        peak[lane] = peak[lane] > level ? peak[lane] : level;
        sum[lane] += behind[i] * second[i];
      }
    return *std::max_element(peak.begin(), peak.end()) *
           std::accumulate(sum.begin(), sum.end(), 0.0);
  }

  // The best order of a set, from those of the sets with one section less.
  void complete(std::size_t members) {
    Set &set = sets_[members];
    set.last = static_cast<std::size_t>(std::countr_zero(members));
    set.noise = sets_[members & (members - 1)].noise;
    for (std::size_t i = set.last + 1; members >> i != 0; ++i) {
      const std::size_t bit = std::size_t{1} << i;
      if ((members & bit) == 0 || !(sets_[members ^ bit].noise < set.noise)) continue;
      set.last = i;
      set.noise = sets_[members ^ bit].noise;
    }
    set.noise += set.noise_behind;
  }

  void multiply_sets(std::size_t first) {
    for (std::size_t members = 1; members < sets_.size(); ++members) {
      const Powers &others = sets_[members & (members - 1)].product;
      const auto lowest = static_cast<std::size_t>(std::countr_zero(members));
      const Powers &section = powers_[order_[first + lowest]];
      Powers &product = sets_[members].product;
      product.resize(others.size());
      for (std::size_t i = 0; i < others.size(); ++i) product[i] = others[i] * section[i];
    }
  }

  // Whether the window has another order then.
  bool improve_window(std::size_t first, const GridLevels &before_window) {
    GridLevels until_behind = before_window;
    for (std::size_t i = 0; i < width_; ++i) add_levels(until_behind, levels_[order_[first + i]]);
    const Powers before = powers_of(before_window, least_of_product);
    Powers behind = powers_of(rest(until_behind), least_of_product);
    for (std::size_t i = 0; i < behind.size(); ++i) behind[i] *= shares_[i];

    multiply_sets(first);
    const std::size_t all = sets_.size() - 1;
    for (std::size_t members = 1; members <= all; ++members) {
      sets_[members].noise_behind =
          noise_between(before, sets_[members].product, behind, sets_[all ^ members].product);
      complete(members);
    }

    double now = 0.0;
    for (std::size_t i = 0; i < width_; ++i) now += sets_[(std::size_t{2} << i) - 1].noise_behind;
    if (!(sets_[all].noise < now * worthwhile)) return false;

    Order best(width_);
    std::size_t members = all;
    for (std::size_t i = width_; i-- > 0;) {
      best[i] = order_[first + sets_[members].last];
      members ^= std::size_t{1} << sets_[members].last;
    }
    std::copy(best.begin(), best.end(), order_.begin() + static_cast<std::ptrdiff_t>(first));
    return true;
  }

  const std::vector<GridLevels> &levels_;
  const std::vector<double> &shares_;
  Order order_;
  std::size_t width_;
  GridLevels silence_, whole_;
  std::vector<Powers> powers_;
  std::vector<Set> sets_;
};

}  // namespace

JudgedOrder quiet_order(Order start, const std::vector<GridLevels> &levels, const LevelGrid &grid) {
  WindowSearch search(std::move(start), levels, grid);
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
