#include "analysis/impulse.h"

#include <gtest/gtest.h>

#include <numeric>

#include "analysis/response.h"
#include "data.h"

namespace {

using namespace analysis;

TEST(Impulse, IsThatOfSciPy) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    if (!one.record.contains("impulse")) continue;
    const std::vector<double> expected = one.column("impulse");
    const std::vector<double> found = impulse_response(one.sections, expected.size());
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i], expected[i], 1e-11 * std::fabs(expected[i]) + 1e-300) << one.name;
    ++checked;
  }
  EXPECT_GE(checked, 8U);
}

TEST(Impulse, StepIsItsRunningSumAndEndsAtTheLevelOfDc) {
  const data::Case &one = data::named("chebyshev-1 lowpass of order 8");
  const std::vector<double> impulse = impulse_response(one.sections, 3000);
  const std::vector<double> step = step_response(one.sections, 3000);
  std::vector<double> sum(impulse.size());
  std::partial_sum(impulse.begin(), impulse.end(), sum.begin());
  for (std::size_t i = 0; i < step.size(); ++i) EXPECT_NEAR(step[i], sum[i], 1e-11);
  EXPECT_NEAR(20 * std::log10(step.back()), level_db(one.sections, 0.0), 1e-9);
}

TEST(Impulse, BeginsWithTheFeedthroughAndFollowsTheEquation) {
  // y[n] = x[n] + 2 x[n-1] + 3 x[n-2] - 0.5 y[n-1] + 0.25 y[n-2]
  const std::vector<double> found = impulse_response({{1, 2, 3, 0.5, -0.25}}, 4);
  EXPECT_EQ(found, (std::vector<double>{1, 1.5, 2.5, -0.875}));
  EXPECT_TRUE(impulse_response({{1, 0, 0, 0, 0}}, 0).empty());
}

}  // namespace
