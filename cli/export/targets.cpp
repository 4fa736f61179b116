#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "export/export.h"

namespace cli {
namespace {

constexpr std::array table{
    Target{"scipy", "Python source: the array sos of scipy.signal.sosfilt", false, true, to_scipy},
    Target{"octave", "an Octave script: the matrix sos of sosfilt", false, true, to_octave},
    Target{"c", "a C99 header in doubles, with a routine that filters", false, true, to_c},
    Target{"c-float", "the same in floats", true, true, to_c_float},
    Target{"cpp", "a C++17 header in doubles, with a class that filters", false, true, to_cpp},
    Target{"cpp-float", "the same in floats", true, true, to_cpp_float},
    Target{"cmsis", "a C header for CMSIS-DSP's arm_biquad_cascade_df1_f32, in floats", true, true,
           to_cmsis},
    Target{"webaudio", "JavaScript lists for one IIRFilterNode, which takes up to 19 poles", false,
           false, to_webaudio},
    Target{"webaudio-sections", "JavaScript for a chain of IIRFilterNodes, one a section", false,
           true, to_webaudio_sections},
    Target{"faust", "a Faust program", false, true, to_faust},
    Target{"csound", "a Csound opcode", false, true, to_csound},
    Target{"supercollider", "a SuperCollider function, whose server computes in floats", true, true,
           to_supercollider},
    Target{"csv", "one section a line: b0,b1,b2,a1,a2", false, true, to_csv},
    Target{"json", "sections, equation and sample rate for programs", false, true,
           to_sections_json},
};

}  // namespace

std::span<const Target> targets() { return table; }

const Target &target_named(const std::string &name) {
  const auto found = std::find_if(table.begin(), table.end(),
                                  [&](const Target &target) { return target.name == name; });
  if (found != table.end()) return *found;
  std::string names;
  for (const Target &target : table)
    names += fmt::format("{}{}", names.empty() ? "" : ", ", target.name);
  throw Refusal(fmt::format("--for cannot be '{}'; it is one of {}", name, names));
}

}  // namespace cli
