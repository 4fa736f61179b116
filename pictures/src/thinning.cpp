#include "pictures/thinning.h"

#include <algorithm>
#include <cmath>

namespace pictures {
namespace {

// What a curve leaves in one column of pixels: where it enters, its extremes, where it leaves.
class Column {
 public:
  void add(double x, double y) {
    if (empty_ || y < low_.y) low_ = {x, y};
    if (empty_ || y > high_.y) high_ = {x, y};
    if (empty_) first_ = {x, y};
    last_ = {x, y};
    empty_ = false;
  }

  void interrupt(double x) {
    flush();
    out_.add(x, std::nan(""));
  }

  void flush() {
    if (empty_) return;
    put(first_);
    if (low_.x < high_.x) {
      put(low_);
      put(high_);
    } else {
      put(high_);
      put(low_);
    }
    put(last_);
    empty_ = true;
  }

  /** @return all columns, the last of which has been flushed. */
  const Curve &curve() const { return out_; }

 private:
  struct Place {
    double x, y;
  };

  void put(const Place &place) {
    if (!out_.x.empty() && out_.x.back() == place.x && out_.y.back() == place.y) return;
    out_.add(place.x, place.y);
  }

  Curve out_;
  bool empty_ = true;
  Place first_{}, low_{}, high_{}, last_{};
};

}  // namespace

Curve thinned(const Curve &curve, const Canvas &canvas) {
  const Axis &levels = canvas.y;
  const double beyond = 2 * (levels.high - levels.low);
  const double lowest = levels.is_logarithmic() ? levels.low / 10 : levels.low - beyond;
  Column column;
  double current = -1.0;
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    if (std::isnan(curve.y[i])) {
      column.interrupt(curve.x[i]);
      continue;
    }
    const double place = std::floor(fraction_along(canvas.x, curve.x[i]) * canvas.width);
    if (place != current) column.flush();
    current = place;
    column.add(curve.x[i], std::clamp(curve.y[i], lowest, levels.high + beyond));
  }
  column.flush();
  return column.curve();
}

}  // namespace pictures
