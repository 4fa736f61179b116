// Numbers in order, each once.
#ifndef PICTURES_ASCENDING_H
#define PICTURES_ASCENDING_H

#include <algorithm>
#include <vector>

namespace pictures {

inline std::vector<double> ascending(std::vector<double> numbers) {
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

}  // namespace pictures

#endif
