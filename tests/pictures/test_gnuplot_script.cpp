// The commands given to gnuplot.

#include <gmock/gmock.h>

#include <algorithm>

#include "designed.h"
#include "gnuplot/picture.h"
#include "gnuplot/quoting.h"
#include "pictures/curves.h"
#include "pictures/figure.h"

using gnuplot::Format;
using pictures::DrawnFilter;
using pictures::Figure;
using pictures::figure_of;
using testing::HasSubstr;
using testing::Not;
using tests::drawn;

TEST(GnuplotScript, NothingInATextIsACommand) {
  const std::string quoted = gnuplot::quoted("a'b\"c`d`e\\f@g$h\n1{_}%\xff");
  EXPECT_EQ(quoted.find_first_of("'`@$\n{}_%", 0), std::string::npos) << quoted;
  EXPECT_EQ(std::count(quoted.begin(), quoted.end(), '"'), 2);
  EXPECT_THAT(quoted, HasSubstr("\\134xff")) << "what is not UTF-8 is replaced";
}

TEST(GnuplotScript, TextsOfOthersAreQuoted) {
  Figure figure = figure_of({drawn("butterworth", "lowpass", 2, {3000})}, {.title = "`reboot`"});
  figure.key.cutoffs = "$(reboot)";
  const std::string script = gnuplot::script(figure, {});
  EXPECT_THAT(script, HasSubstr(gnuplot::quoted("`reboot`")));
  EXPECT_THAT(script, HasSubstr(gnuplot::quoted("$(reboot)")));
  EXPECT_THAT(script, Not(HasSubstr("`")));
  EXPECT_THAT(script, Not(HasSubstr("$(")));
}

// A curve at order 200 has thousands of points, of which a panel shows fewer.
TEST(GnuplotScript, StaysSmallAtOrder200) {
  const Figure figure = figure_of({drawn("chebyshev-2", "bandstop", 200, {20, 20000})});
  EXPECT_GT(figure.level.curves.front().x.size(), 4000U);
  EXPECT_LT(gnuplot::script(figure, {}).size(), 400000U);
}

TEST(GnuplotScript, ThePageGrowsWithTheNamesInTheKey) {
  const DrawnFilter filter = drawn("butterworth", "lowpass", 2, {3000});
  const auto page = [&](std::size_t count, const gnuplot::PictureType &type) {
    return gnuplot::script(figure_of(std::vector(count, filter)), type);
  };
  EXPECT_THAT(page(1, {}), HasSubstr("set terminal svg size 1000,1478 "));
  EXPECT_THAT(page(2, {}), HasSubstr("set terminal svg size 1000,1518 "));
  EXPECT_THAT(page(6, {}), HasSubstr("set terminal svg size 1000,1598 "));
  EXPECT_THAT(page(1, {Format::png, 500}), HasSubstr("set terminal pngcairo size 500,739 "));
  EXPECT_THAT(page(1, {Format::svg, 500}), HasSubstr("set terminal svg size 1000,1478 "));
}
