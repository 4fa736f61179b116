#include <gtest/gtest.h>

#include "support.h"

// Filters that no design yields: what matters is that the sections come back,
// as many as the poles ask for.

namespace {

using namespace support;
using Values = std::vector<double>;

const char *const families[] = {"butterworth", "chebyshev-1", "chebyshev-2", "another"};
const char *const responses[] = {"lowpass", "highpass", "bandpass", "bandstop"};

Values cascade(const Zpk &filter, const char *family, const char *response) {
  const Watchdog watchdog("filtermath_zpk2sos");
  Flat sos;
  filtermath_zpk2sos(filter.get(), gensym(family), gensym(response), &sos.data, &sos.count);
  return sos.values();
}

TEST(Zpk2sosHazards, MissingZerosLieAtMinusOne) {
  const Zpk filter = zpk({}, {{0.5, 0.5}, {0.5, -0.5}, 0.25}, 3.0);
  for (const char *family : {"chebyshev-2", "another"})
    EXPECT_EQ(cascade(filter, family, "lowpass"),
              (Values{3.0, 6.0, 3.0, -1.0, 0.5, 1.0, 1.0, 0.0, -0.25, 0.0}))
        << family;
  EXPECT_EQ(cascade(filter, "butterworth", "bandstop"),
            (Values{3.0, 6.0, 3.0, -1.0, 0.5, 1.0, 1.0, 0.0, -0.25, 0.0}));
}

TEST(Zpk2sosHazards, MissingZerosAreMissingFromTheLaterSections) {
  const Zpk filter = zpk({j, -j}, {{0.5, 0.5}, {0.5, -0.5}, 0.9 * j, -0.9 * j});
  const Values sos = cascade(filter, "chebyshev-2", "highpass");
  EXPECT_EQ((Values{sos[0], sos[1], sos[2]}), (Values{1.0, 0.0, 1.0}));
  EXPECT_EQ((Values{sos[5], sos[6], sos[7]}), (Values{1.0, 2.0, 1.0}));
}

TEST(Zpk2sosHazards, MissingZerosOfALoneSectionLieAtMinusOne) {
  EXPECT_EQ(cascade(zpk({}, {0.25}), "chebyshev-2", "highpass"),
            (Values{1.0, 1.0, 0.0, -0.25, 0.0}));
}

TEST(Zpk2sosHazards, PolesThatHaveNoPartnerStillMakeSections) {
  for (const t_complex64list &poles :
       {t_complex64list{0.5 * j}, t_complex64list{0.5 * j, 0.25},
        t_complex64list{0.5 * j, {0.1, 0.2}, {0.3, -0.4}},
        t_complex64list{0.5 * j, 0.25, {0.1, 0.2}, 0.75, {0.3, -0.4}, 0.125}}) {
    for (const char *family : families) {
      for (const char *response : responses) {
        const Values sos = cascade(zpk({-1.0, -1.0}, poles), family, response);
        EXPECT_EQ(sos.size(), 5 * ((poles.size() + 1) / 2)) << family << " " << response;
        if (poles.size() % 2 == 1) {
          EXPECT_EQ(sos[sos.size() - 3], 0.0) << "b2 of the last section";
          EXPECT_EQ(sos[sos.size() - 1], 0.0) << "a2 of the last section";
        }
      }
    }
  }
}

TEST(Zpk2sosHazards, ZerosThatHaveNoPartnerAreNoTrouble) {
  for (const char *family : families) {
    for (const char *response : responses) {
      const Zpk filter = zpk({j, {0.1, 0.2}, {0.3, -0.4}, 0.5, 0.6},
                             {{0.5, 0.5}, {0.5, -0.5}, 0.9 * j, -0.9 * j, 0.25});
      const Values sos = cascade(filter, family, response);
      ASSERT_EQ(sos.size(), 15u);
      for (const double value : sos) EXPECT_TRUE(std::isfinite(value)) << family << response;
    }
  }
}

// A comparison with NaN is false either way, which sorts do not expect: with
// many of them among finite roots a careless one runs past its list.
TEST(Zpk2sosHazards, ManyNaNsAmongOthersStillMakeSections) {
  t_complex64list roots;
  for (int k = 0; k < 150; ++k) {
    const double re = k % 3 == 0 ? not_a_number : std::sin(k);
    const double im = k % 7 == 0 ? not_a_number : std::cos(3 * k);
    roots.emplace_back(re, im);
    if (k % 5 == 0) roots.emplace_back(re, 0.0);
  }
  for (const char *family : families)
    for (const char *response : responses)
      EXPECT_EQ(cascade(zpk(roots, roots), family, response).size(), 5 * ((roots.size() + 1) / 2));
}

TEST(Zpk2sosHazards, RootsWithNaNsShowInTheSections) {
  const t_complex64list roots(4, {not_a_number, not_a_number});
  for (const char *family : families) {
    for (const char *response : responses) {
      const Values sos = cascade(zpk(roots, roots), family, response);
      ASSERT_EQ(sos.size(), 10u);
      for (const std::size_t at : {3, 4, 8, 9}) EXPECT_TRUE(std::isnan(sos[at])) << at;
    }
  }
}

TEST(Zpk2sosHazards, OddNumbersOfNaNsStillMakeSections) {
  for (const std::size_t count : {1, 3, 5, 33}) {
    const t_complex64list roots(count, {not_a_number, 0.0});
    for (const char *family : families)
      EXPECT_EQ(cascade(zpk(roots, roots), family, "lowpass").size(), 5 * ((count + 1) / 2));
  }
}

TEST(Zpk2sosHazards, InfiniteRootsStillMakeSections) {
  const t_complex64list roots = {{infinity, infinity}, {infinity, -infinity}, -infinity,
                                 {0.5, infinity},      {0.5, -infinity},      infinity};
  for (const char *family : families)
    for (const char *response : responses)
      EXPECT_EQ(cascade(zpk(roots, roots), family, response).size(), 15u);
}

}  // namespace
