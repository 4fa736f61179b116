#include "pictures/label_places.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace pictures {
namespace {

struct Point {
  double x, y;
};

struct Box {
  Point middle;
  double half_width, half_height;

  bool meets(const Box &other) const {
    return std::fabs(middle.x - other.middle.x) < half_width + other.half_width &&
           std::fabs(middle.y - other.middle.y) < half_height + other.half_height;
  }
};

// What a label must not cover, in the unit of the measures from the panel's lower left corner.
class Surroundings {
 public:
  Surroundings(const RootPanel &panel, const RootPanelMeasures &measures)
      : panel_(panel), measures_(measures) {
    const double half = measures.mark / 2;
    for (const ShownRoots &roots : panel.filters)
      for (const Curve *curve : {&roots.zeros, &roots.poles})
        for (const Point &at : points(*curve)) marks_.push_back({at, half, half});
    circle_ = points(panel.unit_circle);
  }

  Point place(double x, double y) const {
    return {fraction_along(panel_.real.axis, x) * measures_.side,
            fraction_along(panel_.imaginary.axis, y) * measures_.side};
  }

  void add_label(const Box &label) { labels_.push_back(label); }

  // How much a label there hides, or is hidden.
  double harm(const Box &label) const {
    constexpr double outside = 1e6, on_label = 1e4, on_mark = 100.0, on_circle = 1.0;
    double sum = is_inside(label) ? 0.0 : outside;
    for (const Box &other : labels_)
      if (label.meets(other)) sum += on_label;
    for (const Box &mark : marks_)
      if (label.meets(mark)) sum += on_mark;
    const bool crossed = std::any_of(circle_.begin(), circle_.end(), [&](const Point &at) {
      return label.meets({at, 0.0, 0.0});
    });
    return sum + (crossed ? on_circle : 0.0);
  }

 private:
  std::vector<Point> points(const Curve &curve) const {
    std::vector<Point> list;
    for (std::size_t i = 0; i < curve.x.size(); ++i) list.push_back(place(curve.x[i], curve.y[i]));
    return list;
  }

  bool is_inside(const Box &box) const {
    return box.middle.x >= box.half_width && box.middle.x <= measures_.side - box.half_width &&
           box.middle.y >= box.half_height && box.middle.y <= measures_.side - box.half_height;
  }

  const RootPanel &panel_;
  const RootPanelMeasures &measures_;
  std::vector<Box> marks_, labels_;
  std::vector<Point> circle_;
};

Box box_of(const MultiplicityLabel &label, const RootPanelMeasures &measures) {
  std::size_t digits = 1;
  for (const std::size_t count : label.counts)
    digits = std::max(digits, std::to_string(count).size());
  return {{0.0, 0.0},
          measures.digit_width * static_cast<double>(digits) / 2,
          measures.line_height * static_cast<double>(label.counts.size()) / 2};
}

// From the label's own mark outward first, and near first.
std::vector<LabelOffset> candidates(const MultiplicityLabel &label, const Box &box,
                                    const RootPanelMeasures &measures) {
  constexpr std::array turns{0, 1, -1, 2, -2, 3, -3, 4};  // eighths of a turn
  std::vector<LabelOffset> list;
  for (const double gap : {0.5, 0.7, 1.0, 1.4, 2.0, 2.8, 4.0, 5.6, 8.0})
    for (const int turn : turns) {
      const analysis::Complex towards = label.outward * std::polar(1.0, turn * std::acos(0.0) / 2);
      const double distance = measures.mark * (0.5 + gap);
      list.push_back({towards.real() * (distance + box.half_width),
                      towards.imag() * (distance + box.half_height)});
    }
  return list;
}

}  // namespace

std::vector<LabelOffset> label_offsets(const RootPanel &panel, const RootPanelMeasures &measures) {
  Surroundings surroundings(panel, measures);
  std::vector<LabelOffset> offsets;
  for (const MultiplicityLabel &label : panel.multiplicities) {
    const Point at = surroundings.place(label.x, label.y);
    Box box = box_of(label, measures);
    const auto moved = [&](const LabelOffset &offset) {
      Box there = box;
      there.middle = {at.x + offset.right, at.y + offset.up};
      return there;
    };
    LabelOffset best{};
    double least = HUGE_VAL;
    for (const LabelOffset &offset : candidates(label, box, measures)) {
      const double harm = surroundings.harm(moved(offset));
      if (!(harm < least)) continue;
      least = harm;
      best = offset;
    }
    surroundings.add_label(moved(best));
    offsets.push_back(best);
  }
  return offsets;
}

}  // namespace pictures
