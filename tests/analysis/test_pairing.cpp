// Sections and the pairs of poles that they hold.
#include "analysis/pairing.h"

#include <gmock/gmock.h>

#include "data.h"

namespace {

using namespace analysis;

TEST(PairingOfPoles, OfEverySectionIsFound) {
  for (const data::Case &one : data::cases()) {
    const Pairing found = pairing(one.roots.poles, one.sections);
    EXPECT_TRUE(found.intact) << one.name;
    EXPECT_TRUE(found.strangers.empty() && found.missing.empty());
  }
}

TEST(PairingOfPoles, NoticesAMovedAMissingAndAMixedPair) {
  const data::Case &one = data::named("chebyshev-1 lowpass of order 8");
  Sections moved = one.sections;
  moved[2].a1 *= 1 + 1e-12;
  const Pairing found = pairing(one.roots.poles, moved);
  EXPECT_FALSE(found.intact);
  EXPECT_THAT(found.strangers, testing::ElementsAre(2U));
  EXPECT_EQ(found.missing.size(), 1U);

  Sections fewer = one.sections;
  fewer.pop_back();
  EXPECT_TRUE(pairing(one.roots.poles, fewer).strangers.empty());
  EXPECT_EQ(pairing(one.roots.poles, fewer).missing.size(), 1U);

  Sections twice = one.sections;
  twice[0] = twice[1];
  EXPECT_EQ(pairing(one.roots.poles, twice).strangers.size(), 1U);

  // one pole of each of two pairs, taken for a section: the denominators swap a1
  Sections mixed = one.sections;
  std::swap(mixed[0].a1, mixed[1].a1);
  EXPECT_THAT(pairing(one.roots.poles, mixed).strangers, testing::ElementsAre(0U, 1U));
}

TEST(PairingOfPoles, TakesRealPolesInAnyCombination) {
  const std::vector<Complex> poles{0.5, 0.25, -0.5, 0.125, 0.75};
  // 0.5 with -0.5, 0.25 with 0.125, and 0.75 alone
  const Sections filter{{1, 0, 0, 0, -0.25}, {1, 0, 0, -0.375, 0.03125}, {1, 0, 0, -0.75, 0}};
  EXPECT_TRUE(pairing(poles, filter).intact);
  EXPECT_FALSE(pairing({0.5, 0.25, -0.5, 0.125, 0.7}, filter).intact);
}

TEST(PairingOfPoles, GivesWayWhereTwoSectionsFitOnePair) {
  // The first section fits both pairs, the second only the first pair.
  const Complex p(0.5, 0.5), q(0.5 + 1e-9, 0.5);
  const auto section = [](const Complex &r) {
    return Section{1, 0, 0, -2 * r.real(), std::norm(r)};
  };
  const Sections filter{section(p + Complex(0.5e-9, 0)), section(p - Complex(0.5e-9, 0))};
  EXPECT_TRUE(pairing({p, std::conj(p), q, std::conj(q)}, filter, 1.2e-9).intact);
}

}  // namespace
