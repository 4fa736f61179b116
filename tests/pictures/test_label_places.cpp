// Counts of multiple roots can be read wherever the roots are.

#include <gmock/gmock.h>

#include <cmath>

#include "designed.h"
#include "pictures/label_places.h"

using pictures::Curve;
using pictures::DrawnFilter;
using pictures::label_offsets;
using pictures::LabelOffset;
using pictures::poles_panel;
using pictures::RootPanel;
using pictures::RootPanelMeasures;
using pictures::zeros_and_poles_panel;
using testing::SizeIs;
using tests::drawn;

namespace {

constexpr RootPanelMeasures measures{285, 9, 8, 13};

struct Rectangle {
  double left, right, low, high;

  bool meets(const Rectangle &other) const {
    return left < other.right && other.left < right && low < other.high && other.low < high;
  }
};

// In pixels from the lower left corner of the panel.
Rectangle around(double x, double y, double width, double height) {
  return {x - width / 2, x + width / 2, y - height / 2, y + height / 2};
}

double across(const RootPanel &panel, double x) {
  return fraction_along(panel.real.axis, x) * measures.side;
}

double upwards(const RootPanel &panel, double y) {
  return fraction_along(panel.imaginary.axis, y) * measures.side;
}

std::vector<Rectangle> labels_of(const RootPanel &panel) {
  const std::vector<LabelOffset> offsets = label_offsets(panel, measures);
  EXPECT_THAT(offsets, SizeIs(panel.multiplicities.size()));
  std::vector<Rectangle> list;
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    const pictures::MultiplicityLabel &label = panel.multiplicities[i];
    std::size_t digits = 0;
    for (const std::size_t count : label.counts)
      digits = std::max(digits, std::to_string(count).size());
    list.push_back(around(across(panel, label.x) + offsets[i].right,
                          upwards(panel, label.y) + offsets[i].up,
                          measures.digit_width * static_cast<double>(digits),
                          measures.line_height * static_cast<double>(label.counts.size())));
  }
  return list;
}

std::vector<Rectangle> marks_of(const RootPanel &panel) {
  std::vector<Rectangle> list;
  for (const pictures::ShownRoots &roots : panel.filters)
    for (const Curve *curve : {&roots.zeros, &roots.poles})
      for (std::size_t i = 0; i < curve->x.size(); ++i)
        list.push_back(around(across(panel, curve->x[i]), upwards(panel, curve->y[i]),
                              measures.mark, measures.mark));
  return list;
}

void expect_readable(const RootPanel &panel) {
  const std::vector<Rectangle> labels = labels_of(panel);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    const Rectangle &label = labels[i];
    EXPECT_GE(label.left, 0.0);
    EXPECT_LE(label.right, measures.side);
    EXPECT_GE(label.low, 0.0);
    EXPECT_LE(label.high, measures.side);
    for (const Rectangle &mark : marks_of(panel)) EXPECT_FALSE(label.meets(mark));
    for (std::size_t j = 0; j < i; ++j) EXPECT_FALSE(label.meets(labels[j]));
  }
}

}  // namespace

// An 8 beside the axis would be one with its number, and others lie among poles.
TEST(LabelPlaces, AreWithinThePanelAndBesideAllMarks) {
  for (const char *response : {"lowpass", "highpass", "bandpass"})
    for (const char *topology : {"butterworth", "chebyshev-1"})
      for (const t_long order : {2, 7, 40})
        for (const double low : {20.0, 300.0, 5000.0}) {
          const bool band = std::string(response) == "bandpass";
          const std::vector<DrawnFilter> filters{
              drawn(topology, response, order,
                    band ? std::vector<double>{low, 20000} : std::vector<double>{low})};
          SCOPED_TRACE(filters.front().name);
          expect_readable(zeros_and_poles_panel(filters));
          expect_readable(poles_panel(filters));
        }
}

TEST(LabelPlaces, CountsOfSeveralFiltersHaveRoomToo) {
  std::vector<DrawnFilter> filters;
  for (const t_long order : {2, 3, 5, 8, 13, 21})
    filters.push_back(drawn("butterworth", "bandpass", order, {20, 20000}));
  const RootPanel panel = zeros_and_poles_panel(filters);
  EXPECT_THAT(panel.multiplicities, SizeIs(2));
  expect_readable(panel);
}

TEST(LabelPlaces, WhereThereIsRoomTheyLieOutward) {
  const RootPanel panel = zeros_and_poles_panel({drawn("butterworth", "lowpass", 4, {3000})});
  const std::vector<LabelOffset> offsets = label_offsets(panel, measures);
  ASSERT_THAT(offsets, SizeIs(1));
  EXPECT_LT(offsets[0].right, -5.0);
  EXPECT_GT(offsets[0].right, -20.0);
  EXPECT_NEAR(offsets[0].up, 0.0, 1e-9);
}
