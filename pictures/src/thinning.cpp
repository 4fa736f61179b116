#include "pictures/thinning.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

// The points of a curve that a line needs to pass all of them closely.
class Straightener {
 public:
  explicit Straightener(const Canvas &canvas) : canvas_(canvas) {}

  Curve operator()(const Curve &curve) {
    for (std::size_t i = 0; i < curve.x.size(); ++i) {
      if (std::isnan(curve.y[i])) {
        end();
        out_.add(curve.x[i], curve.y[i]);
      } else {
        add({curve.x[i], curve.y[i], canvas_.width * fraction_along(canvas_.x, curve.x[i]),
             canvas_.height * fraction_along(canvas_.y, curve.y[i])});
      }
    }
    end();
    return out_;
  }

 private:
  struct Place {
    double x, y;
    double across, up;  // in pixels
  };

  void add(const Place &next) {
    if (!begun_) {
      begin(next);
      return;
    }
    if (!follows_line(next)) begin(last_);
    narrow(next);
    last_ = next;
  }

  void begin(const Place &place) {
    out_.add(place.x, place.y);
    from_ = last_ = place;
    least_ = -std::numeric_limits<double>::infinity();
    most_ = -least_;
    begun_ = true;
  }

  void end() {
    if (begun_ && (last_.x != from_.x || last_.y != from_.y)) out_.add(last_.x, last_.y);
    begun_ = false;
  }

  // Whether a line from the last point that was kept meets all since then.
  bool follows_line(const Place &next) const {
    const double slope = (next.up - from_.up) / (next.across - from_.across);
    return slope >= least_ && slope <= most_;
  }

  void narrow(const Place &next) {
    constexpr double tolerance = 0.05;  // pixels
    const double across = next.across - from_.across, up = next.up - from_.up;
    least_ = std::max(least_, (up - tolerance) / across);
    most_ = std::min(most_, (up + tolerance) / across);
  }

  const Canvas &canvas_;
  Curve out_;
  bool begun_ = false;
  Place from_{}, last_{};
  double least_ = 0.0, most_ = 0.0;  // slopes that all points since from_ allow
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
  return Straightener(canvas)(column.curve());
}

}  // namespace pictures
