// Sections multiplied out.
#include "analysis/expansion.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "data.h"

namespace {

using namespace analysis;
using testing::ElementsAre;

double largest(const std::vector<double> &list) {
  double found = 0.0;
  for (const double value : list) found = std::max(found, std::fabs(value));
  return found;
}

void expect_lists(const std::vector<double> &found, const std::vector<double> &expected,
                  double tolerance, const std::string &name) {
  ASSERT_EQ(found.size(), expected.size()) << name;
  for (std::size_t i = 0; i < found.size(); ++i)
    EXPECT_NEAR(found[i], expected[i], tolerance * largest(expected)) << name << ", " << i;
}

// The expected lists come from the roots: between them and these lie the rounded sections.
TEST(Expansion, GivesTheTransferFunctionOfTheRoots) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    if (one.transfer.numerator.empty()) continue;
    const Transfer found = expanded(one.sections);
    expect_lists(found.numerator, one.transfer.numerator, 1e-15, one.name + ", numerator");
    expect_lists(found.denominator, one.transfer.denominator, 1e-15, one.name + ", denominator");
    ++checked;
  }
  EXPECT_GE(checked, 9U);
}

TEST(Expansion, DropsWhatFirstOrderLeavesEmpty) {
  // (1 + 2d + 3d^2)(4 + 5d) and (1 - 0.5d + 0.25d^2)(1 + 0.5d), d = z^-1
  const Transfer lists = expanded({{1.0, 2.0, 3.0, -0.5, 0.25}, {4.0, 5.0, 0.0, 0.5, 0.0}});
  EXPECT_THAT(lists.numerator, ElementsAre(4.0, 13.0, 22.0, 15.0));
  EXPECT_THAT(lists.denominator, ElementsAre(1.0, 0.0, 0.0, 0.125));
}

TEST(Expansion, KeepsAPlaceThatOnlyOneListUses) {
  EXPECT_THAT(expanded({{1, 0, 0, 0.5, 0}}).numerator, ElementsAre(1.0, 0.0));
  EXPECT_THAT(expanded({{1, 0, 2, 0.5, 0}}).denominator, ElementsAre(1.0, 0.5, 0.0));
}

TEST(Expansion, OfNoSectionsIsOne) {
  EXPECT_THAT(expanded({}).numerator, ElementsAre(1.0));
  EXPECT_THAT(expanded({}).denominator, ElementsAre(1.0));
}

TEST(Expansion, RoundsOnce) {
  // The last coefficient is the product of three factors, which loses its last digit when the
  // product of the first two is rounded to a double.
  const double x = 1 + 215 * 0x1p-30, y = 1 + 97 * 0x1p-30, z = 1 + 500 * 0x1p-30;
  const Transfer found = expanded({{1, x, 0, 0, 0}, {1, y, 0, 0, 0}, {1, z, 0, 0, 0}});
  const double once = static_cast<double>(static_cast<long double>(x) * y * z);
  ASSERT_NE(once, x * y * z);
  EXPECT_EQ(found.numerator[3], once);
}

}  // namespace
