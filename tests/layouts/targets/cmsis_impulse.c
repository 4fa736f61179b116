/* Prints what the stages of an exported header make of an impulse, in floats, by the
 * difference equation that CMSIS-DSP documents for arm_biquad_cascade_df1_f32:
 *   y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] + a1 y[n-1] + a2 y[n-2]
 * with the coefficients of each stage in the order b0, b1, b2, a1, a2.
 *
 *   HEADER  its name in quotes;  COEFFICIENTS, STAGES  what it calls them */
#include HEADER

#include <stdio.h>
#include <stdlib.h>

int main(int argc, char **argv) {
  float x1[STAGES] = {0}, x2[STAGES] = {0}, y1[STAGES] = {0}, y2[STAGES] = {0};
  const long count = argc > 1 ? strtol(argv[1], NULL, 10) : 0;
  long n;
  for (n = 0; n < count; ++n) {
    float x = n == 0 ? 1.0f : 0.0f;
    int i;
    for (i = 0; i < STAGES; ++i) {
      const float *c = COEFFICIENTS + 5 * i;
      const float y = c[0] * x + c[1] * x1[i] + c[2] * x2[i] + c[3] * y1[i] + c[4] * y2[i];
      x2[i] = x1[i];
      x1[i] = x;
      y2[i] = y1[i];
      y1[i] = y;
      x = y;
    }
    printf("%.9g\n", (double)x);
  }
  return 0;
}
