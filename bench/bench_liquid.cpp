// Times liquid-dsp on the same designs: one call that writes second-order
// sections, in single precision, into arrays that are there.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <iostream>
#include <map>
#include <numbers>
#include <string>
#include <vector>

#include <liquid/liquid.h>
#include <complex>  // before liquid.h, which then uses its complex numbers

#include "designs.h"

namespace {

const std::map<std::string, liquid_iirdes_filtertype> families = {
    {"butterworth", LIQUID_IIRDES_BUTTER},
    {"chebyshev-1", LIQUID_IIRDES_CHEBY1},
    {"chebyshev-2", LIQUID_IIRDES_CHEBY2}};

const std::map<std::string, liquid_iirdes_bandtype> responses = {
    {"lowpass", LIQUID_IIRDES_LOWPASS},
    {"highpass", LIQUID_IIRDES_HIGHPASS},
    {"bandpass", LIQUID_IIRDES_BANDPASS},
    {"bandstop", LIQUID_IIRDES_BANDSTOP}};

// Here 1 is the sample rate, not half of it.
float of_sample_rate(double of_nyquist) { return static_cast<float>(of_nyquist / 2.0); }

// Where the bilinear transform puts the geometric mean of the analog edges.
double centre(const std::vector<double> &band) {
  constexpr double half_pi = std::numbers::pi / 2.0;
  return std::atan(std::sqrt(std::tan(half_pi * band[0]) * std::tan(half_pi * band[1]))) / half_pi;
}

void time_design(benchmark::State &state, const bench::Designs &designs,
                 const bench::Design &design) {
  const auto family = families.at(design.family);
  const auto response = responses.at(design.response);
  const auto order = static_cast<unsigned>(design.order);
  // A band is given by its upper edge and its centre.
  const float cutoff = of_sample_rate(design.cutoffs.back());
  const float middle = design.is_band() ? of_sample_rate(centre(design.cutoffs)) : 0.0F;
  const auto ripple = static_cast<float>(designs.passband_ripple);
  const auto attenuation = static_cast<float>(designs.stopband_attenuation);
  const std::size_t poles = design.is_band() ? 2U * order : order;
  const std::size_t sections = (poles + 1) / 2;
  std::vector<float> b(3 * sections);
  std::vector<float> a(3 * sections);

  int status = 0;
  for ([[maybe_unused]] auto _ : state) {
    status |= liquid_iirdes(family, response, LIQUID_IIRDES_SOS, order, cutoff, middle, ripple,
                            attenuation, b.data(), a.data());
    benchmark::ClobberMemory();
  }
  if (status != 0) state.SkipWithError("liquid_iirdes refused");

  std::vector<bench::Section> cascade;
  for (std::size_t i = 0; i < 3 * sections; i += 3)
    cascade.push_back({b[i], b[i + 1], b[i + 2], a[i], a[i + 1], a[i + 2]});
  state.counters["passband_level"] = bench::level(cascade, design.levels_at.at(0));
  state.counters["cutoff_level"] = bench::level(cascade, design.levels_at.at(1));
}

}  // namespace

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  if (argc != 2) {
    std::cerr << "usage: bench-liquid DESIGNS [--benchmark_...]\n";
    return 2;
  }
  try {
    const bench::Designs designs = bench::read_designs(argv[1]);
    for (const bench::Design &design : designs.list)
      benchmark::RegisterBenchmark(design.name.c_str(), [&](benchmark::State &state) {
        time_design(state, designs, design);
      })->Unit(benchmark::kMicrosecond);
    benchmark::RunSpecifiedBenchmarks();
  } catch (const std::exception &error) {
    std::cerr << error.what() << '\n';
    return 3;
  }
  return 0;
}
