#include "pictures/root_panels.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "pictures/root_marks.h"
#include "pictures/z_plane.h"

namespace pictures {
namespace {

using analysis::Complex;

Curve seen(const std::vector<RootMark> &marks, const ZPlaneView &view) {
  Curve places;
  for (const RootMark &mark : marks) {
    const Complex at = view.seen(mark.at);
    places.add(at.real(), at.imag());
  }
  return places;
}

std::vector<RootMark> marks_within(const Square &square,
                                   const std::vector<analysis::Complex> &roots) {
  std::vector<RootMark> marks = root_marks(roots);
  std::erase_if(marks, [&](const RootMark &mark) { return !square.contains(mark.at); });
  return marks;
}

MultiplicityLabel label_of(const RootMark &mark, const ZPlaneView &view) {
  const Complex at = view.seen(mark.at);
  const double length = std::abs(mark.at);
  return {at.real(),
          at.imag(),
          length > 1e-3 ? mark.at / length : Complex(0.0, 1.0),
          {mark.multiplicity}};
}

// Marks that a reader takes for one place share a label, at the first of them.
std::vector<MultiplicityLabel> multiplicities(const std::vector<RootMark> &marks,
                                              const ZPlaneView &view) {
  const double near = view.square().half / 50;
  std::vector<Complex> places;
  std::vector<MultiplicityLabel> labels;
  for (const RootMark &mark : marks) {
    if (mark.multiplicity < 2) continue;
    const auto found = std::find_if(places.begin(), places.end(), [&](const Complex &place) {
      return std::abs(place - mark.at) <= near;
    });
    if (found == places.end()) {
      places.push_back(mark.at);
      labels.push_back(label_of(mark, view));
    } else {
      labels[static_cast<std::size_t>(found - places.begin())].counts.insert(mark.multiplicity);
    }
  }
  return labels;
}

RootPanel root_panel(std::string title, const Square &square,
                     const std::vector<DrawnFilter> &filters) {
  const ZPlaneView view(square);
  RootPanel panel;
  panel.title = std::move(title);
  panel.real = {view.real_axis(), TickStyle::decimal, view.real_label()};
  panel.imaginary = {view.imaginary_axis(), TickStyle::decimal, view.imaginary_label()};
  panel.origin = view.origin();
  panel.unit = view.unit();
  panel.unit_circle = view.unit_circle();
  panel.filters.resize(filters.size());
  std::vector<RootMark> all;
  // The first filter's lie on top of the others', so that theirs are the later ones here.
  for (std::size_t i = filters.size(); i-- > 0;) {
    const auto zeros = marks_within(square, filters[i].roots.zeros);
    const auto poles = marks_within(square, filters[i].roots.poles);
    panel.filters[i] = {seen(zeros, view), seen(poles, view)};
    for (const auto *marks : {&zeros, &poles})
      std::copy(marks->begin(), marks->end(), std::back_inserter(all));
  }
  panel.multiplicities = multiplicities(all, view);
  return panel;
}

// In the units of the z plane, which are those of the whole circle.
Curve frame_of(const Square &enlarged, const Square &whole) {
  constexpr double least_part = 0.045;
  const double half = std::max(enlarged.half, least_part * whole.half);
  Curve frame;
  for (const Complex &corner : {Complex(-1, -1), Complex(1, -1), Complex(1, 1), Complex(-1, 1)}) {
    const Complex at = enlarged.centre + half * corner;
    frame.add(at.real(), at.imag());
  }
  frame.add(frame.x.front(), frame.y.front());
  return frame;
}

bool holds_upper_poles(const Square &square, const std::vector<DrawnFilter> &filters) {
  for (const DrawnFilter &filter : filters)
    for (const Complex &pole : filter.roots.poles)
      if (!square.contains({pole.real(), std::fabs(pole.imag())})) return false;
  return true;
}

}  // namespace

RootPanel zeros_and_poles_panel(const std::vector<DrawnFilter> &filters) {
  const Square whole = around_circle(filters);
  RootPanel panel = root_panel("Zeros and poles", whole, filters);
  panel.frame = frame_of(around_poles(filters), whole);
  return panel;
}

RootPanel poles_panel(const std::vector<DrawnFilter> &filters) {
  const Square square = around_poles(filters);
  return root_panel(holds_upper_poles(square, filters) ? "Poles enlarged, upper half plane"
                                                       : "Poles enlarged where they crowd",
                    square, filters);
}

}  // namespace pictures
