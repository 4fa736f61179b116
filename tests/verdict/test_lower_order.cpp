// The order that a filter has to come down to.

#include "check_test.h"
#include "verdict/lower_order.h"

using designer::Settings;
using namespace verdict;

TEST(LowerOrder, IsTheHighestWithoutTheProblem) {
  const Settings settings{{"topology", {"butterworth"}}, {"order", {85}}, {"frequency", {2.4}}};
  ASSERT_TRUE(wants_lower_order(checked(settings)));
  const auto order = lower_order(designer_with_module(), settings);
  ASSERT_TRUE(order.has_value());
  EXPECT_LT(static_cast<double>(*order), settings.number("order"));
  const auto at = [&settings](std::size_t n) {
    Settings lower = settings;
    lower.set("order", {static_cast<t_long>(n)});
    return checked(lower);
  };
  EXPECT_EQ(at(*order).problems(), 0U) << *order;
  EXPECT_TRUE(wants_lower_order(at(*order + 1))) << *order;
}

TEST(LowerOrder, IsNotWantedBySoundFilters) {
  EXPECT_FALSE(wants_lower_order(checked({})));
  EXPECT_FALSE(wants_lower_order(checked({{"frequency", {24000}}}))) << "another problem";
}

TEST(LowerOrder, IsNotBelowTheRangeOfOrders) {
  EXPECT_EQ(lower_order(designer_with_module(), {{"order", {2}}}), std::nullopt);
  EXPECT_EQ(lower_order(designer_with_module(), {{"order", {3}}}), std::optional<std::size_t>(2));
}
