/* Designs a Butterworth lowpass of order 2 with its cutoff at half the Nyquist frequency, and
 * compares its section with the closed form: there the bilinear transform maps the prototype
 * 1 / (s^2 + sqrt(2) s + 1) to (1 + z^-1)^2 / (2 + sqrt(2) + (2 - sqrt(2)) z^-2). */

#include <filtermath.h>

#include <brontal/memory.h>
#include <math.h>
#include <stdio.h>

int main(void) {
  const double fs = 2.0;
  const double wo = 2.0 * fs; /* 4 tan(pi / 4) */
  t_symbol *lowpass = gensym("lowpass");
  t_zpk *prototype = NULL, *digital;
  _statespace *model = statespace_new();
  double *zeros, *poles, *sections, gain;
  int64_t zero_count, pole_count, count;

  filtermath_buttap(2, &prototype);
  filtermath_zpk2ss(prototype, model);
  zpk_free(prototype);
  filtermath_lp2lp(model, wo);
  filtermath_bilinear(model, fs);
  filtermath_ss2zpk_butterworth(model, lowpass, &zeros, &zero_count, &poles, &pole_count, &gain,
                                wo);
  statespace_free(model);
  digital = zpk_new_init(zeros, zero_count, poles, pole_count, gain);
  sysmem_freeptr(zeros);
  sysmem_freeptr(poles);
  filtermath_zpk2sos(digital, gensym("butterworth"), lowpass, &sections, &count);
  zpk_free(digital);

  const double b0 = 1.0 / (2.0 + sqrt(2.0));
  const double expected[] = {b0, 2.0 * b0, b0, 0.0, (2.0 - sqrt(2.0)) * b0};
  int faults = count != 5;
  for (int i = 0; i < 5 && !faults; ++i) {
    printf("%.17g\n", sections[i]);
    if (!(fabs(sections[i] - expected[i]) < 1e-15)) {
      fprintf(stderr, "number %d of the section is %.17g, not %.17g\n", i, sections[i],
              expected[i]);
      ++faults;
    }
  }
  sysmem_freeptr(sections);
  return faults;
}
