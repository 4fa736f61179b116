// Roots as they are marked.

#include <gmock/gmock.h>

#include "designed.h"
#include "pictures/root_marks.h"

using pictures::root_marks;
using testing::SizeIs;

TEST(RootMarks, EqualRootsAreOneMarkWithACount) {
  const pictures::DrawnFilter filter = tests::drawn("butterworth", "bandpass", 200, {1000, 4000});
  const auto zeros = root_marks(filter.roots.zeros);
  ASSERT_THAT(zeros, SizeIs(2));
  EXPECT_EQ(zeros[0].multiplicity, 200U);
  EXPECT_EQ(zeros[1].multiplicity, 200U);
  EXPECT_THAT(root_marks(filter.roots.poles), SizeIs(400));
}

TEST(RootMarks, RootsADistanceApartAreTwo) {
  EXPECT_THAT(root_marks({{0.5, 0.0}, {0.5, 1e-10}}), SizeIs(2));
  EXPECT_THAT(root_marks({{0.5, 0.0}, {0.5, 1e-12}}), SizeIs(1));
}
