#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::double_text;

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("The arguments of biquad: b0 b1 b2 1 a1 a2.");
  usage.emplace_back("Use: sox in.wav out.wav $(grep -v '^#' FILE)");
  usage.push_back(fmt::format(
      "SoX does not ask for the sample rate: soxi -r in.wav must print {0}; 'rate {0}' before $( "
      "converts another.",
      filter.samplerate));
  usage.emplace_back("SoX dithers what it writes with fewer bits than it read (-D prevents it).");
  std::string file = comment(filter, "# ", usage);
  for (const analysis::Section &s : filter.sections)
    file += fmt::format("biquad {} {} {} 1 {} {}\n", double_text(s.b0), double_text(s.b1),
                        double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return file;
}

}  // namespace

constinit const Target sox_target{"sox",
                                  "effects of SoX, which has integers between them",
                                  Arithmetic::integers_between,
                                  Form::sections,
                                  write,
                                  analysis::Structure::direct_1};

}  // namespace layouts
