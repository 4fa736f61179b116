#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::double_text;

// The names are those of MATLAB's documentation, whose functions take sections and a gain. The gain
// is in the sections, but filtfilt and sos2tf want both.
std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("Each row of sos: b0 b1 b2 1 a1 a2. All of the gain is in them, and g is 1.");
  usage.emplace_back("Use, for signals in the columns of x:");
  usage.emplace_back(
      "     y = x; for k = 1:size(sos, 1), y = filter(sos(k, 1:3), sos(k, 4:6), y); end");
  usage.emplace_back("     y = sosfilt(sos, x);          % the same (Signal Processing Toolbox)");
  usage.emplace_back("     y = filtfilt(sos, g, x);      % without a delay, twice the dB");
  usage.emplace_back("     freqz(sos, 8192, fs)          % or fvtool(sos, 'Fs', fs)");
  usage.emplace_back(
      "     f = dsp.SOSFilter(sos(:, 1:3), sos(:, 4:6)); y = f(x);  % in blocks (DSP System "
      "Toolbox)");
  std::string file = comment(filter, "% ", usage);
  file += fmt::format("\nfs = {};\ng = 1;\nsos = [\n", filter.samplerate);
  for (const analysis::Section &s : filter.sections)
    file += fmt::format("  {} {} {} 1 {} {}\n", double_text(s.b0), double_text(s.b1),
                        double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return file + "];\n";
}

}  // namespace

constinit const Target matlab_target{
    "matlab", "a MATLAB script: fs, and sos and g as sosfilt, filtfilt and dsp.SOSFilter take them",
    Arithmetic::doubles, Form::sections, write};

}  // namespace layouts
