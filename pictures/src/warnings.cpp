#include "pictures/warnings.h"

#include <fmt/format.h>

namespace pictures {

std::vector<std::string> warnings(const DrawnFilter &filter, const std::string &subject) {
  std::vector<std::string> sentences;
  if (filter.is_silent())
    sentences.push_back(subject +
                        " is silent: its gain is too small for a double; its level "
                        "is drawn without the gain, with the peak at 0 dB");
  if (filter.is_unstable())
    sentences.push_back(fmt::format("{} is unstable: {} of its poles lie outside the unit circle",
                                    subject, filter.poles_outside));
  return sentences;
}

}  // namespace pictures
