// What `veltane plot` draws, as numbers.

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "plot/axis.h"
#include "plot/figure.h"
#include "plot/gnuplot.h"
#include "plot/panel.h"
#include "plot/ranges.h"
#include "plot/root_panels.h"
#include "plot/series.h"
#include "run_command.h"

using cli::plot::Axis;
using cli::plot::Curve;
using cli::plot::passband_axis;
using cli::plot::Trace;
using cli::plot::whole_axis;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

constexpr double half_power = -3.0102999566398120;

/** @param settings  attributes as a box takes them: "order: 4 frequency: 300 3400" */
Trace traced(const cli::Settings &settings) {
  patchbay::Host host;
  cli::load_module(host, VELTANE_MODULE);
  return cli::plot::trace(cli::run_design(host, settings), "the filter");
}

cli::Settings settings(const std::string &topology, const std::string &response, t_long order,
                       const std::vector<double> &cutoffs) {
  return {{"topology", {topology}},
          {"response", {response}},
          {"order", {order}},
          {"frequency", patchbay::Values(cutoffs.begin(), cutoffs.end())}};
}

double level_in(const Curve &curve, double hz) {
  const auto found = std::min_element(curve.x.begin(), curve.x.end(), [&](double x, double y) {
    return std::fabs(x - hz) < std::fabs(y - hz);
  });
  EXPECT_NEAR(*found, hz, 1e-9 * hz) << "no point of the curve is there";
  return curve.y[static_cast<std::size_t>(found - curve.x.begin())];
}

double highest(const Curve &curve) { return *std::max_element(curve.y.begin(), curve.y.end()); }

std::vector<std::string> labels(const std::vector<cli::plot::Tick> &ticks) {
  std::vector<std::string> list;
  for (const auto &tick : ticks)
    if (!tick.label.empty()) list.push_back(tick.label);
  return list;
}

}  // namespace

TEST(PlotSeries, LevelAtAButterworthsCutoffsIsHalfThePower) {
  for (const t_long order : {2, 5, 200}) {
    const Trace lowpass = traced(settings("butterworth", "lowpass", order, {3000}));
    EXPECT_NEAR(level_in(level_curve(lowpass, whole_axis({lowpass})), 3000), half_power, 1e-6);
    EXPECT_NEAR(level_in(level_curve(lowpass, passband_axis({lowpass})), 3000), half_power, 1e-6);
    ASSERT_EQ(lowpass.half_power.size(), 1U);
    EXPECT_NEAR(lowpass.half_power[0], 3000, 1e-5);
  }
}

TEST(PlotSeries, ANarrowBandAtTwentyHertzIsMetWholly) {
  const Trace band = traced(settings("butterworth", "bandpass", 5, {20, 21}));
  const Axis whole = whole_axis({band});
  EXPECT_LE(whole.low, 2.0);
  EXPECT_EQ(whole.high, 24000.0);
  const Curve curve = level_curve(band, whole);
  EXPECT_NEAR(highest(curve), 0.0, 1e-3);
  EXPECT_NEAR(level_in(curve, 20), half_power, 1e-6);
  EXPECT_NEAR(level_in(curve, 21), half_power, 1e-6);
  const Axis enlarged = passband_axis({band});
  EXPECT_FALSE(enlarged.logarithmic);
  EXPECT_GT(enlarged.low, 19.0);
  EXPECT_LT(enlarged.high, 22.0);
}

// Each of the 100 waves, the narrowest of which is 0.4 Hz wide.
TEST(PlotSeries, EveryRippleReachesItsBounds) {
  const Trace ripple = traced(settings("chebyshev-1", "lowpass", 200, {3000}));
  EXPECT_EQ(ripple.ripple, 0.5);
  const Curve curve = level_curve(ripple, {0.0, 3000.0, false});
  int tops = 0;
  for (std::size_t i = 1; i + 1 < curve.y.size(); ++i) {
    if (curve.y[i] > curve.y[i - 1] && curve.y[i] >= curve.y[i + 1] && curve.y[i] > -0.25) {
      EXPECT_NEAR(curve.y[i], 0.0, 0.01) << curve.x[i];
      ++tops;
    }
    EXPECT_GE(curve.y[i], -0.5 - 1e-4);
  }
  EXPECT_EQ(tops, 100);
}

TEST(PlotSeries, TheCutoffOfAChebyshev2IsItsStopbandsEdge) {
  const Trace trace = traced(settings("chebyshev-2", "highpass", 6, {2000}));
  EXPECT_EQ(trace.attenuation, 96.0);
  EXPECT_NEAR(level_at(trace, 2000), -96.0, 1e-6);
  ASSERT_EQ(trace.half_power.size(), 1U);
  EXPECT_NEAR(level_at(trace, trace.half_power[0]), half_power, 1e-6);
  EXPECT_GT(trace.half_power[0], 2000);
}

// Minus the slope of the phase; so that its integral is what the phase loses.
TEST(PlotSeries, DelayIsWhatThePhaseLoses) {
  for (const Trace &trace : {traced(settings("butterworth", "lowpass", 4, {1000})),
                             traced(settings("chebyshev-1", "bandpass", 3, {500, 700}))}) {
    const Axis axis{100.0, 20000.0, true};
    const Curve phase = phase_curve(trace, axis);
    const Curve delay = delay_curve(trace, axis);
    double turns = 0.0;
    for (std::size_t i = 1; i < delay.x.size(); ++i)
      turns += (delay.x[i] - delay.x[i - 1]) * (delay.y[i] + delay.y[i - 1]) / 2;
    EXPECT_NEAR(360.0 * turns, phase.y.front() - phase.y.back(), 0.2);
  }
}

TEST(PlotSeries, ThePhaseIsInterruptedAtZerosOnTheCircle) {
  const Trace trace = traced(settings("chebyshev-2", "lowpass", 9, {3000}));
  const Curve phase = phase_curve(trace, {1.0, 23999.0, true});
  std::size_t interruptions = 0;
  for (std::size_t i = 1; i < phase.y.size(); ++i) {
    if (std::isnan(phase.y[i])) ++interruptions;
    if (std::isnan(phase.y[i]) || std::isnan(phase.y[i - 1])) continue;
    EXPECT_LT(std::fabs(phase.y[i] - phase.y[i - 1]), 30.0) << phase.x[i];
  }
  EXPECT_EQ(interruptions, 4U);
}

TEST(PlotSeries, EqualRootsAreOneMarkWithACount) {
  const Trace trace = traced(settings("butterworth", "bandpass", 200, {1000, 4000}));
  const auto zeros = cli::plot::root_marks(trace.roots.zeros);
  ASSERT_EQ(zeros.size(), 2U);
  EXPECT_EQ(zeros[0].count, 200U);
  EXPECT_EQ(zeros[1].count, 200U);
  EXPECT_EQ(cli::plot::root_marks(trace.roots.poles).size(), 400U);
}

TEST(PlotSeries, ASilentFilterShowsItsShape) {
  const Trace trace = traced(settings("butterworth", "lowpass", 200, {20}));
  EXPECT_TRUE(trace.silent);
  EXPECT_NEAR(trace.peak_db, 0.0, 1e-6);
  EXPECT_NEAR(level_at(trace, 20), half_power, 1e-3);
  ASSERT_EQ(trace.half_power.size(), 1U);
  EXPECT_NEAR(trace.half_power[0], 20, 1e-3);
  EXPECT_FALSE(traced(settings("butterworth", "lowpass", 20, {20})).silent);
}

TEST(PlotSeries, PolesOutsideTheCircleAreCounted) {
  EXPECT_EQ(traced(settings("butterworth", "bandpass", 3, {3000, 1000})).outside, 6U);
  EXPECT_EQ(traced(settings("butterworth", "bandpass", 3, {1000, 3000})).outside, 0U);
}

TEST(PlotSeries, CutoffsAreInHertzWhateverTheUnit) {
  cli::Settings normalized = settings("butterworth", "lowpass", 2, {0.25});
  normalized.emplace_back("units", patchbay::Values{std::string("normalized")});
  normalized.emplace_back("samplerate", patchbay::Values{t_long{44100}});
  const Trace trace = traced(normalized);
  EXPECT_THAT(trace.cutoffs, ElementsAre(testing::DoubleEq(0.25 * 22050)));
  EXPECT_EQ(whole_axis({trace}).high, 22050.0);
}

TEST(PlotSeries, TheFloorShowsTheStopband) {
  const Trace quiet = traced(settings("chebyshev-2", "lowpass", 5, {3000}));
  EXPECT_EQ(cli::plot::usual_floor({quiet}), -120.0);
  cli::Settings deep = settings("chebyshev-2", "lowpass", 30, {3000});
  deep.emplace_back("stopband_attenuation", patchbay::Values{240.0});
  EXPECT_EQ(cli::plot::usual_floor({traced(deep)}), -300.0);
}

TEST(PlotAxis, FrequenciesAreLabelledAsInPapers) {
  EXPECT_THAT(labels(cli::plot::frequency_ticks({20.0, 24000.0, true}, 18)),
              ElementsAre("20", "50", "100", "200", "500", "1k", "2k", "5k", "10k", "20k"));
  EXPECT_THAT(labels(cli::plot::frequency_ticks({19.75, 21.25, false}, 4)),
              ElementsAre("20.0", "20.5", "21.0"));
  EXPECT_THAT(labels(cli::plot::frequency_ticks({0.0, 3750.0, false}, 4)),
              ElementsAre("0", "1k", "2k", "3k"));
  EXPECT_THAT(labels(cli::plot::frequency_ticks({2999.75, 3001.25, false}, 4)),
              ElementsAre("3000.0", "3000.5", "3001.0"));
  EXPECT_EQ(cli::plot::frequency_text(812.43), "812.43 Hz");
  EXPECT_EQ(cli::plot::frequency_text(3000), "3 kHz");
  EXPECT_EQ(cli::plot::frequency_text(999.9999999), "1 kHz");
}

TEST(PlotAxis, NegativeNumbersHaveAMinusSignAndZeroHasNone) {
  EXPECT_THAT(labels(cli::plot::number_ticks({-0.4, 0.2, false}, 3)),
              ElementsAre("\u22120.4", "\u22120.2", "0.0", "0.2"));
  EXPECT_THAT(labels(cli::plot::degree_ticks({-800.0, 10.0, false}, 6)),
              ElementsAre("\u2212720", "\u2212540", "\u2212360", "\u2212180", "0"));
}

// No step is 0, and no tick is made that the next one does not differ from.
TEST(PlotAxis, WithoutALengthHasNoEndOfTicks) {
  const double huge = 1e300, inf = std::numeric_limits<double>::infinity();
  const Axis axes[] = {{0.0, 0.0, false},   {-3.0, -3.0, false}, {1e20, 1e20 + 1e5, false},
                       {2.0, 1.0, false},   {-inf, inf, false},  {0.0, inf, false},
                       {-inf, -inf, false}, {0.0, NAN, false},   {huge, huge * (1 + 4e-16), false}};
  for (const Axis &axis : axes)
    for (auto *const ticks :
         {cli::plot::number_ticks, cli::plot::degree_ticks, cli::plot::frequency_ticks})
      EXPECT_LE(ticks(axis, 8).size(), 9U) << axis.low << " to " << axis.high;
  EXPECT_THAT(cli::plot::number_ticks({0.0, 8.0, false}, 8), SizeIs(9));
  EXPECT_THAT(cli::plot::number_ticks({1e14, 1e14 + 8, false}, 8), SizeIs(9));
}

// Below 2 % of the axis a line for the ripple would be hidden by the curve.
TEST(PlotScript, ARippleHasALineWhereItCanBeSeen) {
  const auto lines = [](double ripple) {
    cli::plot::Figure figure;
    figure.traces = {traced(settings("chebyshev-1", "lowpass", 3, {3000}))};
    figure.traces[0].ripple = ripple;
    figure.frequencies = whole_axis(figure.traces);
    figure.levels = {-99.0, 1.0, false};
    const std::string script = cli::plot::script(figure);
    int count = 0;
    for (std::size_t at = script.find(cli::plot::limit_style); at != std::string::npos;
         at = script.find(cli::plot::limit_style, at + 1))
      ++count;
    return count;
  };
  EXPECT_EQ(lines(1.99), 2) << "in the key and in the enlarged passband";
  EXPECT_EQ(lines(2.01), 3);
}

TEST(PlotScript, PolesBelowTheAxisAloneHaveAPanel) {
  Trace trace = traced(settings("butterworth", "lowpass", 2, {3000}));
  const cli::plot::Square above = cli::plot::around_poles({trace});
  std::erase_if(trace.roots.poles, [](const auto &pole) { return pole.imag() > 0.0; });
  ASSERT_THAT(trace.roots.poles, SizeIs(1));
  const cli::plot::Square below = cli::plot::around_poles({trace});
  EXPECT_GT(below.half, 0.0);
  EXPECT_EQ(below.half, above.half);
  EXPECT_EQ(below.centre, above.centre);
}

TEST(PlotScript, NothingInATextIsACommand) {
  const std::string quoted = cli::plot::quoted("a'b\"c`d`e\\f@g$h\n1{_}%\xff");
  EXPECT_EQ(quoted.find_first_of("'`@$\n{}_%", 0), std::string::npos) << quoted;
  EXPECT_EQ(std::count(quoted.begin(), quoted.end(), '"'), 2);
  EXPECT_THAT(quoted, HasSubstr("\\134xff")) << "what is not UTF-8 is replaced";
}

// A curve at order 200 has tens of thousands of points, of which a panel shows fewer.
TEST(PlotScript, APictureStaysSmallAtOrder200) {
  const Trace trace = traced(settings("chebyshev-2", "bandstop", 200, {20, 20000}));
  cli::plot::Figure figure;
  figure.traces = {trace};
  figure.frequencies = whole_axis(figure.traces);
  figure.levels = whole_levels(figure.traces, usual_floor(figure.traces));
  EXPECT_GT(level_curve(trace, figure.frequencies).x.size(), 10000U);
  EXPECT_LT(cli::plot::script(figure).size(), 400000U);
}
