// Values along an axis.

#include <gtest/gtest.h>

#include "pictures/axis.h"

using pictures::Axis;
using pictures::fraction_along;
using pictures::Scale;
using pictures::value_at;

TEST(Axis, APlaceAndItsValueAreInverses) {
  for (const Axis &axis : {Axis{-20.0, 5.0}, Axis{20.0, 20000.0, Scale::logarithmic}})
    for (const double fraction : {0.0, 0.1, 0.5, 0.99, 1.0})
      EXPECT_NEAR(fraction_along(axis, value_at(axis, fraction)), fraction, 1e-12);
}

TEST(Axis, TheMiddleOfALogarithmicOneIsTheGeometricMean) {
  EXPECT_NEAR(value_at({10.0, 1000.0, Scale::logarithmic}, 0.5), 100.0, 1e-10);
  EXPECT_EQ(value_at({10.0, 1000.0}, 0.5), 505.0);
}

TEST(Axis, ItsEndsAreMetExactly) {
  const Axis axis{0.1, 24000.0, Scale::logarithmic};
  EXPECT_EQ(value_at(axis, 1.0), 24000.0);
  EXPECT_EQ(value_at(axis, 2.0), 24000.0);
  EXPECT_EQ(value_at(axis, -1.0), 0.1);
}

TEST(Axis, RoundingGoesToOneTwoAndFive) {
  EXPECT_DOUBLE_EQ(pictures::rounded_up(3.0), 5.0);
  EXPECT_DOUBLE_EQ(pictures::rounded_down(3.0), 2.0);
  EXPECT_DOUBLE_EQ(pictures::rounded_up(0.06), 0.1);
  EXPECT_DOUBLE_EQ(pictures::rounded_down(0.09), 0.05);
  for (const double round : {1.0, 20.0, 5e-4}) {
    EXPECT_DOUBLE_EQ(pictures::rounded_up(round), round);
    EXPECT_DOUBLE_EQ(pictures::rounded_down(round), round);
  }
}
