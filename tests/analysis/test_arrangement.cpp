// Sections arranged so that a cascade runs quietly.
#include "analysis/arrangement.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>

#include <gmock/gmock.h>

#include "analysis/cascade_peaks.h"
#include "analysis/extremes.h"
#include "analysis/response.h"
#include "analysis/run.h"
#include "data.h"

namespace {

using namespace analysis;

constexpr Structure structures[] = {Structure::direct_1, Structure::direct_2_transposed,
                                    Structure::state_variable};

/** Both edges as fractions of the Nyquist frequency. */
struct Edges {
  double low, high;
};

// A Butterworth band filter from its closed form: for each pole of the prototype, s^2 - p B s + W^2
// or its reciprocal, and the bilinear transform. First come the sections of the low edge, then those
// of the high one, the least damped first: as noisy an order as there is.
Sections butterworth(Band band, int order, Edges edges) {
  const double low = std::tan(std::numbers::pi / 2 * edges.low);
  const double high = std::tan(std::numbers::pi / 2 * edges.high);
  const double centre = low * high;  // squared
  // The zero of each section at the centre.
  const double cosine = (1 - centre) / (1 + centre);
  Sections of_low, of_high;
  for (int k = 0; k < order / 2; ++k) {
    const Complex prototype =
        std::polar(1.0, std::numbers::pi * (0.5 + (2 * k + 1) / (2.0 * order)));
    const Complex half = (high - low) / 2 * (band == Band::bandstop ? 1.0 / prototype : prototype);
    const Complex root = std::sqrt(half * half - centre);
    std::vector<Complex> poles;
    for (const Complex &s : {half + root, half - root}) poles.push_back((1.0 + s) / (1.0 - s));
    std::sort(poles.begin(), poles.end(), [](const Complex &a, const Complex &b) {
      return std::fabs(std::arg(a)) < std::fabs(std::arg(b));
    });
    for (const Complex &pole : poles) {
      Section section{1, 0, -1, -2 * pole.real(), std::norm(pole)};
      if (band == Band::bandstop) section.b1 = -2 * cosine, section.b2 = 1;
      (&pole == &poles[0] ? of_low : of_high).push_back(section);
    }
  }
  of_low.insert(of_low.end(), of_high.begin(), of_high.end());
  // Unity at the centre, or at DC.
  const double w = band == Band::bandstop ? 0.0 : std::acos(cosine) / std::numbers::pi;
  const double gain = std::pow(10.0, -level_db(of_low, w) / 20);
  for (double *value : {&of_low[0].b0, &of_low[0].b1, &of_low[0].b2}) *value *= gain;
  return of_low;
}

// The places between sections: how far the peak before each, times that behind it, is above the peak
// of the whole filter, in dB.
std::vector<double> excesses(const Sections &filter) {
  const std::vector<Peak> before = running_peaks(filter);
  const std::vector<Peak> behind = running_peaks(Sections(filter.rbegin(), filter.rend()));
  std::vector<double> found;
  for (std::size_t i = 0; i + 1 < filter.size(); ++i)
    found.push_back(before[i].db + behind[filter.size() - 2 - i].db - before.back().db);
  return found;
}

double worst_excess(const Sections &filter) {
  const std::vector<double> all = excesses(filter);
  return *std::max_element(all.begin(), all.end());
}

bool same(const Section &a, const Section &b) {
  return a.b0 == b.b0 && a.b1 == b.b1 && a.b2 == b.b2 && a.a1 == b.a1 && a.a2 == b.a2;
}

bool same(const Sections &a, const Sections &b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const Section &x, const Section &y) { return same(x, y); });
}

using Denominator = std::pair<double, double>;

std::vector<Denominator> denominators(const Sections &filter) {
  std::vector<Denominator> found;
  for (const Section &section : filter) found.emplace_back(section.a1, section.a2);
  return found;
}

// The power of two by which the numerator of one section is that of the other; none if it is not.
std::optional<int> power_between(const Section &from, const Section &to) {
  const int power =
      std::ilogb(to.b0 != 0 ? to.b0 : to.b1) - std::ilogb(from.b0 != 0 ? from.b0 : from.b1);
  if (std::ldexp(from.b0, power) != to.b0 || std::ldexp(from.b1, power) != to.b1 ||
      std::ldexp(from.b2, power) != to.b2)
    return std::nullopt;
  return power;
}

// The greatest difference between the responses, relative to the peak of the first.
double response_difference(const Sections &a, const Sections &b) {
  double peak = 0, most = 0;
  for (int i = 0; i <= 500; ++i) {
    const double w = i < 400 ? i / 400.0 : std::pow(10.0, (i - 500) / 25.0);
    peak = std::max(peak, std::abs(response(a, w)));
    most = std::max(most, std::abs(response(a, w) - response(b, w)));
  }
  return most / peak;
}

// How far the output for a sine is from what the response says, once it has settled.
template <class T, class Run>
double sine_error(const Sections &filter, double w, std::size_t settled, Run run) {
  const double angle = std::numbers::pi * w;
  std::vector<T> signal(settled + 1000);
  for (std::size_t n = 0; n < signal.size(); ++n)
    signal[n] = static_cast<T>(std::sin(angle * static_cast<double>(n)));
  const std::vector<T> output = run(std::move(signal));
  const Complex gain = response(filter, w);
  double worst = 0;
  for (std::size_t n = settled; n < output.size(); ++n) {
    const double expected = (gain * std::polar(1.0, angle * static_cast<double>(n))).imag();
    const double error = std::fabs(static_cast<double>(output[n]) - expected);
    if (!(error <= worst)) worst = error;  // NaN as well
  }
  return worst;
}

template <class T>
double direct_sine_error(const Sections &filter, double w, std::size_t settled) {
  return sine_error<T>(filter, w, settled, [&](std::vector<T> signal) {
    return run_direct_2_transposed<T>(filter, std::move(signal));
  });
}

TEST(Arrangement, MovesSectionsAndPowersOfTwoOnly) {
  for (const data::Case &one : data::cases())
    for (const Structure structure : {Structure::direct_1, Structure::direct_2_transposed}) {
      const Sections found = arranged(one.sections, structure);
      ASSERT_EQ(found.size(), one.sections.size()) << one.name;
      int powers = 0;
      for (const Section &section : found) {
        const auto given =
            std::find_if(one.sections.begin(), one.sections.end(), [&](const Section &candidate) {
              return candidate.a1 == section.a1 && candidate.a2 == section.a2;
            });
        ASSERT_NE(given, one.sections.end()) << one.name;
        const auto power = power_between(*given, section);
        ASSERT_TRUE(power.has_value()) << one.name << ": a numerator has other digits";
        powers += *power;
      }
      EXPECT_EQ(powers, 0) << one.name;
      EXPECT_THAT(denominators(found),
                  testing::UnorderedElementsAreArray(denominators(one.sections)))
          << one.name;
    }
}

TEST(Arrangement, KeepsTheFilterWhereItPairsZerosAnew) {
  std::size_t anew = 0;
  for (const Edges edges : {Edges{0.001, 0.8}, Edges{0.02, 0.5}, Edges{0.3, 0.4}})
    for (const int order : {2, 4, 8, 12, 40}) {
      const Sections given = butterworth(Band::bandpass, order, edges);
      const Sections found = arranged(given, Structure::state_variable);
      EXPECT_THAT(denominators(found), testing::UnorderedElementsAreArray(denominators(given)));
      EXPECT_LE(response_difference(given, found), static_cast<double>(order) * 1e-15)
          << order << ", " << edges.low;
      anew += std::any_of(found.begin(), found.end(), [](const Section &s) { return s.b1 != 0; });
    }
  EXPECT_GE(anew, 8U);
}

TEST(Arrangement, PutsZerosBesideTheNearestPolesOfStateVariableSections) {
  const Sections given = butterworth(Band::bandpass, 4, {0.001, 0.8});
  const Sections found = arranged(given, Structure::state_variable);
  for (const Section &section : found) {
    const double zero = section.a1 < 0 ? 1.0 : -1.0;
    EXPECT_EQ(section.b1 / section.b0, -2 * zero);
    EXPECT_EQ(section.b2 / section.b0, 1.0);
  }
  EXPECT_LE(worst_excess(found), 10.0);
  EXPECT_GE(worst_excess(arranged(given, Structure::direct_1)), 30.0) << "as they were given";
}

TEST(Arrangement, KeepsConjugateZerosTogether) {
  // Two pairs of zeros on the circle, each with the farther poles, and one pair of real zeros.
  const auto zeros = [](double angle) { return -2 * std::cos(angle); };
  const Sections given{{3, 3 * zeros(0.4), 3, -2 * 0.95 * std::cos(1.5), 0.9025},
                       {1, zeros(1.6), 1, -2 * 0.95 * std::cos(0.3), 0.9025},
                       {0.5, 0, -0.5, -2 * 0.9 * std::cos(0.8), 0.81}};
  const Sections found = arranged(given, Structure::state_variable);
  for (const Section &section : found) {
    if (section.a1 == given[0].a1) {
      EXPECT_EQ(section.b1 / section.b0, zeros(1.6));
    }
    if (section.a1 == given[1].a1) {
      EXPECT_NEAR(section.b1 / section.b0, zeros(0.4), 1e-15);
    }
    if (section.a1 == given[2].a1) {
      EXPECT_EQ(section.b2 / section.b0, -1);
    }
  }
  EXPECT_LE(response_difference(given, found), 1e-15);
}

TEST(Arrangement, SpreadsTheGainSoThatNothingOverflowsInside) {
  for (const data::Case &one : data::cases())
    for (const Structure structure : {Structure::direct_1, Structure::state_variable}) {
      // Left out of some is a gain that no double holds, and without it no last section makes up.
      if (one.lift > 6000) continue;
      const std::vector<Peak> peaks = running_peaks(arranged(one.sections, structure));
      for (std::size_t i = 0; i + 1 < peaks.size(); ++i) {
        EXPECT_LE(peaks[i].db, 4.0) << one.name << ", " << i;
        EXPECT_GE(peaks[i].db, -3.1) << one.name << ", " << i;
      }
    }
}

// The power of white noise behind a filter, by the middles of many stripes.
double noise_power(const Sections &filter) {
  constexpr int stripes = 4000;
  double sum = 0;
  for (int i = 0; i < stripes; ++i) sum += std::norm(response(filter, (i + 0.5) / stripes));
  return sum / stripes;
}

TEST(Arrangement, IsTheBestOfAllOrdersOfFewSections) {
  for (const Band band : {Band::bandpass, Band::bandstop}) {
    const Sections given = butterworth(band, 6, {0.01, 0.3});
    const std::size_t sets = std::size_t{1} << given.size();
    std::vector<double> peak(sets, 1.0), power(sets, 1.0);  // of the product of each set, squared
    for (std::size_t set = 1; set < sets; ++set) {
      Sections product;
      for (std::size_t i = 0; i < given.size(); ++i)
        if (set >> i & 1) product.push_back(given[i]);
      peak[set] = std::pow(10.0, extremes(product, {{0.0, 1.0}}).highest.db / 10);
      power[set] = noise_power(product);
    }
    const auto noise = [&](const std::vector<std::size_t> &order) {
      double sum = 0;
      std::size_t set = 0;
      for (const std::size_t i : order) {
        set |= std::size_t{1} << i;
        sum += peak[set] * power[sets - 1 - set] / peak[sets - 1];
      }
      return sum;
    };
    std::vector<std::size_t> order(given.size()), chosen;
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (const Section &section : arranged(given, Structure::direct_1))
      chosen.push_back(static_cast<std::size_t>(
          std::find_if(given.begin(), given.end(),
                       [&](const Section &s) { return s.a1 == section.a1; }) -
          given.begin()));
    double least = noise(order), most = least;
    do {
      least = std::min(least, noise(order));
      most = std::max(most, noise(order));
    } while (std::next_permutation(order.begin(), order.end()));
    EXPECT_LE(noise(chosen), 1.2 * least) << "in a decibel, for what is between the frequencies";
    EXPECT_GE(most, 100 * least) << "or the order would not matter";
  }
}

TEST(Arrangement, IsQuietAtHighOrdersToo) {
  // A greedy order leaves 150 dB and more here.
  const Sections bandstop = butterworth(Band::bandstop, 64, {0.01, 0.4});
  EXPECT_GE(worst_excess(bandstop), 300.0);
  EXPECT_LE(worst_excess(arranged(bandstop, Structure::direct_2_transposed)), 50.0);
  const Sections bandpass = butterworth(Band::bandpass, 64, {0.001, 0.8});
  EXPECT_GE(worst_excess(bandpass), 300.0);
  EXPECT_LE(worst_excess(arranged(bandpass, Structure::state_variable)), 25.0);
}

TEST(Arrangement, IsTheSameInAnyOrderOfTheGivenSections) {
  Sections given = butterworth(Band::bandpass, 12, {0.01, 0.3});
  const double before = worst_excess(arranged(given, Structure::direct_1));
  std::reverse(given.begin(), given.end());
  EXPECT_NEAR(worst_excess(arranged(given, Structure::direct_1)), before, 1e-6);
}

// 20 to 20000 Hz at 48 kHz.
constexpr Edges audio{20.0 / 24000, 20000.0 / 24000};

// Just above the low edge, where the sections of that edge make it loudest.
constexpr double low_note = 25.0 / 24000;

TEST(ArrangedFilter, PassesASineInFloatsThatTheGivenOneDoesNot) {
  const Sections given = butterworth(Band::bandpass, 8, audio);
  EXPECT_GE(direct_sine_error<float>(given, low_note, 60000), 1.0);
  EXPECT_LE(
      direct_sine_error<float>(arranged(given, Structure::direct_2_transposed), low_note, 60000),
      1e-2);
  const Sections quiet = arranged(given, Structure::state_variable);
  const auto form = state_variables(quiet);
  ASSERT_TRUE(form.has_value());
  EXPECT_LE(sine_error<float>(quiet, low_note, 60000,
                              [&](std::vector<float> signal) {
                                return run_state_variable<float>(*form, std::move(signal));
                              }),
            1e-5);
}

TEST(ArrangedFilter, PassesASineInDoublesThatTheGivenOneDoesNot) {
  const Sections given = butterworth(Band::bandpass, 12, audio);
  EXPECT_GE(direct_sine_error<double>(given, low_note, 90000), 1.0);
  EXPECT_LE(
      direct_sine_error<double>(arranged(given, Structure::direct_2_transposed), low_note, 90000),
      1e-10);

  // Muscles, 20 to 450 Hz at 2 kHz.
  const Sections muscles = butterworth(Band::bandpass, 48, {0.02, 0.45});
  EXPECT_GE(direct_sine_error<double>(muscles, 0.025, 30000), 1e6);
  EXPECT_LE(
      direct_sine_error<double>(arranged(muscles, Structure::direct_2_transposed), 0.025, 30000),
      1e-10);
}

TEST(Arrangement, GivesBackWhatCannotRun) {
  const Section good{1, 0.5, 0.25, -0.5, 0.25}, other{2, 0, 1, 0.9, 0.8};
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  const Sections bad{{1, 0, 0, nan, 0},    {nan, 0, 0, 0, 0},  {1, infinite, 0, 0, 0},
                     {0, 0, 0, -0.5, 0},   {1, 0, 0, -1, 0},   {1, 0, 0, -1.5, 0.5},
                     {1, 0, 0, -1.2, 1.0}, {1, 0, 0, 0, 1.01}, {1, 0, 0, 2.5, 0.9}};
  for (const Section &section : bad)
    for (const Structure structure : structures) {
      const Sections found = arranged({other, section, good}, structure);
      ASSERT_EQ(found.size(), 3U);
      EXPECT_TRUE(same(found[0], other)) << section.b0 << ' ' << section.a1 << ' ' << section.a2;
      EXPECT_TRUE(same(found[2], good)) << section.b0 << ' ' << section.a1 << ' ' << section.a2;
      EXPECT_EQ(found[1].a2, section.a2);
    }
}

TEST(Arrangement, LeavesGainsThatNoDoubleHolds) {
  const Section loud{1e200, 0, 0, 0, 0};
  for (const Section &section : arranged(Sections(3, loud), Structure::direct_1))
    EXPECT_TRUE(same(section, loud));
  const Section quiet{1e-200, 0, 0, 0, 0};
  for (const Section &section : arranged(Sections(3, quiet), Structure::state_variable))
    EXPECT_TRUE(same(section, quiet));
}

TEST(Arrangement, TakesAnyNumberOfSections) {
  for (const Structure structure : structures) {
    EXPECT_TRUE(arranged({}, structure).empty());
    const Sections one{{3, 2, 1, -0.5, 0.25}};
    EXPECT_TRUE(same(arranged(one, structure), one));
    EXPECT_TRUE(same(arranged({{0, 0, 7, 0, 0}}, structure), {{0, 0, 7, 0, 0}})) << "a delay";
    // Twenty of one kind, each with a peak of 4 at DC.
    const Sections found = arranged(Sections(20, Section{1, 0, 0, -1, 0.25}), structure);
    ASSERT_EQ(found.size(), 20U);
    for (std::size_t i = 0; i + 1 < found.size(); ++i) EXPECT_EQ(found[i].b0, 0.25);
    EXPECT_EQ(found.back().b0, std::ldexp(1.0, 38)) << "what the others gave away";
  }
}

TEST(Arrangement, TakesSectionsOfAnyForm) {
  // First order; real poles; zeros at 0, at infinity, real ones; none of the poles in pairs.
  const Sections given{{2, 1, 0, -0.9, 0},        {0, 1, 0.5, -0.3, 0.02}, {0, 0, 3, -1.8, 0.85},
                       {1, 0, 0, 0.5, 0.06},      {1, -2.5, 1, -1.2, 0.9}, {5, 0.5, -1, 1.6, 0.9},
                       {1, -1, 0, 0, 0},          {1, 0.3, 0.02, -0.2, 0}, {1e-9, 1, 1, 0.1, 0.5},
                       {1, 1.9, 0.95, -1.9, 0.93}};
  for (const Structure structure : structures) {
    const Sections found = arranged(given, structure);
    EXPECT_THAT(denominators(found), testing::UnorderedElementsAreArray(denominators(given)));
    EXPECT_LE(response_difference(given, found), 1e-14);
    for (const Section &section : found)
      if (section.a1 == -0.9) {
        EXPECT_EQ(section.b2, 0) << "of first order still";
      }
  }
}

TEST(Arrangement, LosesNothingOfExtremeGains) {
  for (const double gain : {1e-300, 1e-150, 1e150, 1e300})
    for (const Structure structure : structures) {
      Sections given = butterworth(Band::bandpass, 8, {0.01, 0.3});
      // Whole at 1 again, and huge or tiny inside.
      for (double *value : {&given[1].b0, &given[1].b2}) *value *= gain;
      for (double *value : {&given[6].b0, &given[6].b2}) *value *= 1 / gain;
      const Sections found = arranged(given, structure);
      for (const Section &section : found) {
        EXPECT_GE(std::fabs(section.b0), 1e-6);
        EXPECT_LE(std::fabs(section.b0), 1e6);
      }
      EXPECT_LE(response_difference(given, found), 1e-14) << gain;

      given[6].b0 *= gain;
      given[6].b2 *= gain;  // now the whole has it
      const Sections scaled = arranged(given, structure);
      EXPECT_NEAR(level_db(scaled, 0.06), level_db(given, 0.06), 1e-9) << gain;
      EXPECT_TRUE(std::isnormal(scaled.back().b0));
    }
}

}  // namespace
