#include "pictures/root_marks.h"

#include <algorithm>
#include <cmath>

namespace pictures {

std::vector<RootMark> root_marks(const std::vector<analysis::Complex> &roots) {
  constexpr double same_root = 1e-11;
  std::vector<RootMark> marks;
  for (const analysis::Complex &root : roots) {
    const auto found = std::find_if(marks.begin(), marks.end(), [&](const RootMark &mark) {
      // Most are nowhere near, which takes no root to see.
      const analysis::Complex apart = mark.at - root;
      return std::fabs(apart.real()) <= same_root && std::abs(apart) <= same_root;
    });
    if (found == marks.end())
      marks.push_back({root, 1});
    else
      ++found->multiplicity;
  }
  return marks;
}

}  // namespace pictures
