// Ticks are where papers have them, and are written as there.

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "pictures/ticks.h"

using pictures::Axis;
using pictures::Scale;
using pictures::ticks;
using pictures::TickStyle;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

std::vector<std::string> labels(const Axis &axis, TickStyle style, int most) {
  std::vector<std::string> list;
  for (const auto &tick : ticks(axis, style, most))
    if (!tick.label.empty()) list.push_back(tick.label);
  return list;
}

}  // namespace

TEST(Ticks, FrequenciesAreLabelledAsInPapers) {
  EXPECT_THAT(labels({20.0, 24000.0, Scale::logarithmic}, TickStyle::magnitudes, 18),
              ElementsAre("20", "50", "100", "200", "500", "1k", "2k", "5k", "10k", "20k"));
  EXPECT_THAT(labels({19.75, 21.25}, TickStyle::magnitudes, 4),
              ElementsAre("20.0", "20.5", "21.0"));
  EXPECT_THAT(labels({0.0, 3750.0}, TickStyle::magnitudes, 4), ElementsAre("0", "1k", "2k", "3k"));
  EXPECT_THAT(labels({2999.75, 3001.25}, TickStyle::magnitudes, 4),
              ElementsAre("3000.0", "3000.5", "3001.0"));
}

TEST(Ticks, WhereThereIsLittleRoomOnlyPowersOfTenAreLabelled) {
  EXPECT_THAT(labels({20.0, 24000.0, Scale::logarithmic}, TickStyle::magnitudes, 5),
              ElementsAre("100", "1k", "10k"));
}

TEST(Ticks, NegativeNumbersHaveAMinusSignAndZeroHasNone) {
  EXPECT_THAT(labels({-0.4, 0.2}, TickStyle::decimal, 3),
              ElementsAre("\u22120.4", "\u22120.2", "0.0", "0.2"));
  EXPECT_THAT(labels({-800.0, 10.0}, TickStyle::degrees, 6),
              ElementsAre("\u2212720", "\u2212540", "\u2212360", "\u2212180", "0"));
}

// No step is 0, and no tick is made that the next one does not differ from.
TEST(Ticks, OfAnAxisWithoutALengthHaveAnEnd) {
  const double huge = 1e300, inf = std::numeric_limits<double>::infinity();
  const Axis axes[] = {{0.0, 0.0},   {-3.0, -3.0}, {1e20, 1e20 + 1e5},
                       {2.0, 1.0},   {-inf, inf},  {0.0, inf},
                       {-inf, -inf}, {0.0, NAN},   {huge, huge * (1 + 4e-16)}};
  for (const Axis &axis : axes)
    for (const TickStyle style : {TickStyle::decimal, TickStyle::degrees, TickStyle::magnitudes})
      EXPECT_LE(ticks(axis, style, 8).size(), 9U) << axis.low << " to " << axis.high;
  EXPECT_THAT(ticks({0.0, 8.0}, TickStyle::decimal, 8), SizeIs(9));
  EXPECT_THAT(ticks({1e14, 1e14 + 8}, TickStyle::decimal, 8), SizeIs(9));
}
