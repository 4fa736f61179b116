#include <cmath>

#include <fmt/format.h>

#include "comment.h"
#include "designer/refusal.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::double_text;

// Of its options; it refuses more.
constexpr double largest = 2147483647.0;

std::string write(const ExportedFilter &filter) {
  for (const analysis::Section &s : filter.sections)
    for (const double coefficient : {s.b0, s.b1, s.b2, s.a1, s.a2})
      if (std::fabs(coefficient) > largest)
        throw designer::Refusal(
            fmt::format("--for ffmpeg: FFmpeg takes coefficients up to {:.0f}, and one of this "
                        "filter is {:g}",
                        largest, coefficient));
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("Use: ffmpeg -i in.wav -af \"$(grep -v '^#' FILE)\" out.wav");
  usage.push_back(
      fmt::format("FFmpeg does not ask for the sample rate: ffprobe in.wav must print {0} Hz; "
                  "'aresample={0},' before $( converts another.",
                  filter.samplerate));
  usage.emplace_back(
      "Inside it computes in doubles. A WAV file gets 16 bits, undithered, and clips without a "
      "word, unless -c:a pcm_f32le or pcm_s24le stands before its name.");
  std::string file = comment(filter, "# ", usage);
  // Without it, samples of 16 bits would be filtered as such.
  file += "aformat=sample_fmts=dblp";
  for (const analysis::Section &s : filter.sections)
    file += fmt::format(",\nbiquad=b0={}:b1={}:b2={}:a0=1:a1={}:a2={}:transform=tdii",
                        double_text(s.b0), double_text(s.b1), double_text(s.b2), double_text(s.a1),
                        double_text(s.a2));
  return file + '\n';
}

}  // namespace

constinit const Target ffmpeg_target{"ffmpeg", "a filter graph for the -af of FFmpeg",
                                     Arithmetic::doubles, Form::sections, write};

}  // namespace layouts
