#include "pictures/root_marks.h"

#include <algorithm>

namespace pictures {

std::vector<RootMark> root_marks(const std::vector<analysis::Complex> &roots) {
  constexpr double same_root = 1e-11;
  std::vector<RootMark> marks;
  for (const analysis::Complex &root : roots) {
    const auto found = std::find_if(marks.begin(), marks.end(), [&](const RootMark &mark) {
      return std::abs(mark.at - root) <= same_root;
    });
    if (found == marks.end())
      marks.push_back({root, 1});
    else
      ++found->multiplicity;
  }
  return marks;
}

}  // namespace pictures
