#include <gtest/gtest.h>

#include <string>

#include "support.h"

// What the whole chain of calls must come to: facts that a filter is known by.

namespace {

using namespace support;
using Values = std::vector<double>;

struct Settings {
  std::string family;
  std::string response;
  int order;
  double low;  /**< the edge, a fraction of the Nyquist frequency */
  double high; /**< the upper edge of a band */
  double decibels = 1.0;

  bool band() const { return response[0] == 'b'; }
};

std::ostream &operator<<(std::ostream &out, const Settings &s) {
  return out << s.family << " " << s.response << " of order " << s.order << " at " << s.low;
}

struct Design {
  Model model;
  Zpk filter;
  Values sos;
  Values num;
  Values den;
};

Design design(const Settings &s) {
  const double low = prewarped(s.low);
  const double high = prewarped(s.high);
  const double wo = s.band() ? std::sqrt(low * high) : low;
  t_symbol *const family = gensym(s.family.c_str());
  t_symbol *const kind = gensym(s.response.c_str());
  const bool one = s.family == "chebyshev-1";
  const bool two = s.family == "chebyshev-2";

  Design d;
  d.model = realised(one   ? chebyshev1(s.order, s.decibels)
                     : two ? chebyshev2(s.order, s.decibels)
                           : butterworth(s.order));
  _statespace *const ss = d.model.get();
  if (s.response == "lowpass") filtermath_lp2lp(ss, wo);
  if (s.response == "highpass") filtermath_lp2hp(ss, wo);
  if (s.response == "bandpass") filtermath_lp2bp(ss, wo, high - low);
  if (s.response == "bandstop") filtermath_lp2bs(ss, family, wo, high - low);
  filtermath_bilinear(ss, 2.0);

  Flat zeros, poles, sos, num, den;
  double gain = 0.0;
  if (two)
    filtermath_ss2zpk(ss, &zeros.data, &zeros.count, &poles.data, &poles.count, &gain);
  else
    filtermath_ss2zpk_butterworth(ss, kind, &zeros.data, &zeros.count, &poles.data, &poles.count,
                                  &gain, wo);
  d.filter.reset(zpk_new_init(zeros.data, zeros.count, poles.data, poles.count, gain));
  filtermath_zpk2sos(d.filter.get(), family, kind, &sos.data, &sos.count);
  filtermath_ss2coefs(ss, nullptr, nullptr, &den.data, &den.count);
  if (two)
    filtermath_cheby2num(ss, &num.data, &num.count);
  else if (one)
    filtermath_cheby1num(kind, s.order, den.data, den.count, &num.data, &num.count, wo, s.decibels);
  else
    filtermath_buttnum(kind, s.order, den.data, den.count, &num.data, &num.count, wo);
  d.sos = sos.values();
  d.num = num.values();
  d.den = den.values();
  return d;
}

const char *const all_families[] = {"butterworth", "chebyshev-1", "chebyshev-2"};

/** Every response, with edges whose centre suits the numerators of a bandpass. */
std::vector<Settings> all_responses(const std::string &family, double decibels) {
  std::vector<Settings> all;
  for (int order = 1; order <= 8; ++order) {
    for (const double edge : {0.15, 0.4, 0.7}) {
      all.push_back({family, "lowpass", order, edge, 0.0, decibels});
      all.push_back({family, "highpass", order, edge, 0.0, decibels});
    }
    if (order > 4) continue;
    all.push_back({family, "bandpass", order, 0.3, 0.45, decibels});
    all.push_back({family, "bandstop", order, 0.3, 0.45, decibels});
  }
  return all;
}

bool passes(const Settings &s, double w) {
  if (s.response == "lowpass") return w <= s.low;
  if (s.response == "highpass") return w >= s.low;
  return (s.response == "bandpass") == (w >= s.low && w <= s.high);
}

Values grid() {
  Values w;
  for (int k = 1; k < 2000; ++k) w.push_back(k / 2000.0);
  return w;
}

double level(const Design &d, double w) { return decibels(response(d.filter, on_circle(w))); }

// --- the facts, as questions that a wrong filter must answer with no -----------------

testing::AssertionResult edges_lie_at(const Settings &s, const Design &d, double expected) {
  for (const double edge : s.band() ? Values{s.low, s.high} : Values{s.low})
    if (!(std::abs(level(d, edge) - expected) < 1e-6))
      return testing::AssertionFailure() << s << ": " << level(d, edge) << " dB at " << edge;
  return testing::AssertionSuccess();
}

/** Within [low, high] dB wherever the filter passes (or stops), and at both. */
testing::AssertionResult fills(const Settings &s, const Design &d, bool passband, double low,
                               double high) {
  double lowest = infinity;
  double highest = -infinity;
  Values points = grid();
  points.push_back(s.low);
  if (s.band()) points.push_back(s.high);
  for (const double w : points) {
    const bool edge = w == s.low || (s.band() && w == s.high);
    if (!edge && passes(s, w) != passband) continue;
    lowest = std::min(lowest, level(d, w));
    highest = std::max(highest, level(d, w));
  }
  const double slack = 1e-6;
  if (lowest < low - slack || highest > high + slack)
    return testing::AssertionFailure() << s << ": from " << lowest << " to " << highest << " dB";
  // The grid does not hit every extreme.
  if (std::abs(highest - high) > 0.02 || (std::isfinite(low) && std::abs(lowest - low) > 0.02))
    return testing::AssertionFailure() << s << ": only " << lowest << " to " << highest << " dB";
  return testing::AssertionSuccess();
}

testing::AssertionResult forms_agree(const Settings &s, const Design &d, double tolerance) {
  // A lone first-order section carries no gain.
  const double owed = d.sos.size() == 5 && d.den.size() == 2 ? d.filter->gain : 1.0;
  for (int k = 1; k < 40; ++k) {
    const Complex z = on_circle(k / 40.0);
    const Complex expected = response(d.model, z);
    for (const Complex other :
         {response(d.filter, z), owed * cascade_response(d.sos, z), response(d.num, d.den, z)})
      if (const auto same = close(other, expected, tolerance); !same)
        return testing::AssertionFailure() << s << " at " << k << "/40: " << same.message();
  }
  return testing::AssertionSuccess();
}

// --- and the filters that must answer with yes ----------------------------------------

TEST(Chain, AButterworthIsHalfThePowerDownAtItsEdges) {
  for (const Settings &s : all_responses("butterworth", 0.0))
    EXPECT_TRUE(edges_lie_at(s, design(s), -3.010299956639812));
}

TEST(Chain, AButterworthFallsAllTheWayFromUnityAtZero) {
  for (const int order : {1, 3, 6}) {
    const Design d = design({"butterworth", "lowpass", order, 0.3, 0.0});
    EXPECT_NEAR(level(d, 0.0), 0.0, 1e-9);
    double before = 1e-9;
    for (double w = 0.02; w < 0.9; w += 0.02) {
      EXPECT_LT(level(d, w), before) << "order " << order << " at " << w;
      before = level(d, w);
    }
    EXPECT_EQ(response(d.filter, -1.0), 0.0) << "nothing passes at the Nyquist frequency";
  }
}

TEST(Chain, AHighpassPassesTheNyquistFrequencyAndNothingAtZero) {
  for (int order = 1; order <= 8; ++order) {
    const Design d = design({"butterworth", "highpass", order, 0.3, 0.0});
    EXPECT_NEAR(level(d, 1.0), 0.0, 1e-9) << order;
    EXPECT_EQ(response(d.filter, 1.0), 0.0) << order;
  }
}

TEST(Chain, AChebyshev1TouchesItsRippleAndDoesNotExceedIt) {
  for (const double ripple : {0.1, 1.0, 3.0}) {
    for (const Settings &s : all_responses("chebyshev-1", ripple)) {
      const Design d = design(s);
      EXPECT_TRUE(edges_lie_at(s, d, -ripple));
      EXPECT_TRUE(fills(s, d, true, -ripple, 0.0));
    }
  }
}

TEST(Chain, AChebyshev2ReachesItsAttenuationAndStaysBelow) {
  for (const double attenuation : {20.0, 60.0}) {
    for (const Settings &s : all_responses("chebyshev-2", attenuation)) {
      const Design d = design(s);
      EXPECT_TRUE(edges_lie_at(s, d, -attenuation));
      EXPECT_TRUE(fills(s, d, false, -infinity, -attenuation));
    }
  }
}

TEST(Chain, AChebyshev2HasAllItsZerosOnTheUnitCircle) {
  for (const Settings &s : all_responses("chebyshev-2", 40.0)) {
    const Design d = design(s);
    EXPECT_EQ(d.filter->zeros.size(), d.filter->poles.size());
    // An odd band has double zeros at both ends, known to half the digits only.
    const double tolerance = s.band() ? 1e-6 : 1e-9;
    for (const Complex zero : d.filter->zeros)
      EXPECT_NEAR(std::abs(zero), 1.0, tolerance) << s << ": " << zero;
  }
}

TEST(Chain, EveryDesignIsStable) {
  for (const char *family : all_families)
    for (const Settings &s : all_responses(family, 3.0))
      for (const Design d = design(s); const Complex pole : d.filter->poles)
        EXPECT_LT(std::abs(pole), 1.0) << s;
}

TEST(Chain, ModelRootsSectionsAndPolynomialsAreOneFilter) {
  for (const char *family : all_families) {
    for (const Settings &s : all_responses(family, 3.0))
      EXPECT_TRUE(forms_agree(s, design(s), s.band() ? 1e-7 : 1e-8));
  }
}

// Half a band is where poles line up in one column and zeros fall together.
TEST(Chain, AHalfbandFilterIsOneFilterInItsSectionsToo) {
  for (const char *family : all_families)
    for (const char *response : {"lowpass", "highpass"})
      for (int order = 1; order <= 8; ++order) {
        const Settings s = {family, response, order, 0.5, 0.0, 3.0};
        EXPECT_TRUE(forms_agree(s, design(s), 1e-8));
      }
}

TEST(Chain, ALoneFirstOrderSectionOwesTheGain) {
  for (const char *family : all_families) {
    const Design d = design({family, "lowpass", 1, 0.2, 0.0, 3.0});
    const Complex z = on_circle(0.1);
    ASSERT_EQ(d.sos.size(), 5u);
    EXPECT_TRUE(close(d.filter->gain * cascade_response(d.sos, z), response(d.filter, z), 1e-14));
  }
}

// --- negative controls: were these yes, the facts above would mean nothing -------------

TEST(Chain, TheWrongFilterIsFoundOut) {
  const Settings flat = {"butterworth", "lowpass", 4, 0.3, 0.0, 1.0};
  const Settings ripple = {"chebyshev-1", "lowpass", 4, 0.3, 0.0, 1.0};
  Settings beside = flat;
  beside.low = 0.3001;
  EXPECT_FALSE(edges_lie_at(beside, design(flat), -3.010299956639812));
  EXPECT_FALSE(edges_lie_at(ripple, design(ripple), -3.010299956639812));
  EXPECT_FALSE(fills(flat, design(flat), true, -1.0, 0.0)) << "exceeds";
  EXPECT_FALSE(fills(ripple, design(ripple), true, -1.1, 0.0)) << "does not touch";
  EXPECT_FALSE(fills(flat, design(flat), false, -infinity, -40.0));
}

TEST(Chain, OneCoefficientOutOfPlaceIsFoundOut) {
  const Settings s = {"chebyshev-2", "lowpass", 5, 0.3, 0.0, 40.0};
  const double off = 1e-5;
  for (const int which : {0, 1, 2, 3}) {
    Design d = design(s);
    if (which == 0) d.sos[7] += off;
    if (which == 1) d.num[2] += off;
    if (which == 2) d.den[2] += off;
    if (which == 3) d.filter->zeros[0] += off;
    EXPECT_FALSE(forms_agree(s, d, 1e-8)) << which;
  }
}

}  // namespace
