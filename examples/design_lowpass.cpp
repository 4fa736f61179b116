// Designs a Butterworth lowpass of order 4, 3 dB down at 1000 Hz, for a sample
// rate of 48000 Hz, with filtermath and no host, and prints its sections.
//
// Build: link the targets `filtermath` and `runtime`.

#include <cmath>
#include <cstdio>
#include <memory>

#include "brontal/memory.h"
#include "filtermath.h"

int main() {
  constexpr int order = 4;
  constexpr double cutoff = 1000.0;       // Hz
  constexpr double samplerate = 48000.0;  // Hz
  constexpr double pi = 3.141592653589793;

  // The design is made for a sampling rate of 2, where the Nyquist frequency is
  // 1. The bilinear transform bends frequencies; the tangent bends the cutoff
  // beforehand so that it ends up where it should.
  constexpr double fs = 2.0;
  const double fraction_of_nyquist = cutoff / (samplerate / 2.0);
  const double wo = 2.0 * fs * std::tan(fraction_of_nyquist * pi / 2.0);

  t_symbol *topology = gensym("butterworth");
  t_symbol *response = gensym("lowpass");

  t_zpk *made = nullptr;
  filtermath_buttap(order, &made);
  const std::unique_ptr<t_zpk, decltype(&zpk_free)> prototype(made, zpk_free);

  const std::unique_ptr<_statespace, decltype(&statespace_free)> model(statespace_new(),
                                                                       statespace_free);
  filtermath_zpk2ss(prototype.get(), model.get());
  filtermath_lp2lp(model.get(), wo);
  filtermath_bilinear(model.get(), fs);

  double *zeros = nullptr;
  double *poles = nullptr;
  int64_t zero_count = 0;
  int64_t pole_count = 0;
  double gain = 0.0;
  filtermath_ss2zpk_butterworth(model.get(), response, &zeros, &zero_count, &poles, &pole_count,
                                &gain, wo);

  const std::unique_ptr<t_zpk, decltype(&zpk_free)> digital(
      zpk_new_init(zeros, zero_count, poles, pole_count, gain), zpk_free);
  sysmem_freeptr(zeros);
  sysmem_freeptr(poles);

  double *sections = nullptr;
  int64_t section_values = 0;
  filtermath_zpk2sos(digital.get(), topology, response, &sections, &section_values);

  std::puts("H(z) = product of (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2)");
  std::printf("%24s %24s %24s %24s %24s\n", "b0", "b1", "b2", "a1", "a2");
  for (int64_t i = 0; i < section_values; i += 5)
    std::printf("%24.17g %24.17g %24.17g %24.17g %24.17g\n", sections[i], sections[i + 1],
                sections[i + 2], sections[i + 3], sections[i + 4]);
  sysmem_freeptr(sections);
  return 0;
}
