#include "javascript.h"

#include <fmt/format.h>

#include "text/numbers.h"

namespace layouts {

std::string number_list(const std::vector<double> &values) {
  std::string list;
  for (const double value : values) list += (list.empty() ? "" : ", ") + text::double_text(value);
  return list;
}

std::string audio_context_line(const ExportedFilter &filter) {
  return fmt::format("Use: const context = new AudioContext({{ sampleRate: {} }});",
                     filter.samplerate);
}

}  // namespace layouts
