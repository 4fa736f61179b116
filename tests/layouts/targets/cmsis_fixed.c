/* Runs a signal through the stages of an exported header in fixed point, as the documentation of
 * CMSIS-DSP describes its direct-form I cascades. A model of that text, not the library:
 *
 * arm_biquad_cascade_df1_q31: coefficients and samples are 1.31. Five products of 2.62 are added up
 *   in 64 bits, which wrap around. The sum is shifted by the postshift, and its low 32 bits below
 *   1.31 are discarded, so the result wraps around as well.
 * arm_biquad_cascade_df1_q15: coefficients and samples are 1.15, with a zero between b0 and b1. The
 *   products are added up as 34.30. The sum is shifted by the postshift, its low 15 bits are
 *   discarded, and what is left is saturated to 1.15.
 *
 * Reads samples as integers, and prints the output; then, in a line that begins with "overflows",
 * how many results of a stage did not fit.
 *
 *   HEADER  its name in quotes;  COEFFICIENTS, STAGES, POSTSHIFT  what it calls them
 *   BITS    32 or 16 */
#include HEADER

#include <stdio.h>

#if BITS == 32
typedef int32_t sample_t;
enum { per_stage = 5, b1_at = 1 };
#else
typedef int16_t sample_t;
enum { per_stage = 6, b1_at = 2 };
#endif

__extension__ typedef __int128 exact_t;

static const int64_t highest = ((int64_t)1 << (BITS - 1)) - 1;
static long overflows;

/* The exact sum tells whether the result fits; the one in 64 bits is what is computed. */
static sample_t result(exact_t exact, uint64_t sum) {
  const int shift = BITS - 1 - POSTSHIFT;
  const int64_t shifted = (int64_t)sum >> shift;
  if ((exact >> shift) > highest || (exact >> shift) < -highest - 1) ++overflows;
#if BITS == 32
  return (sample_t)(uint32_t)shifted;
#else
  return (sample_t)(shifted > highest ? highest : shifted < -highest - 1 ? -highest - 1 : shifted);
#endif
}

int main(void) {
  sample_t x1[STAGES] = {0}, x2[STAGES] = {0}, y1[STAGES] = {0}, y2[STAGES] = {0};
  long read;
  while (scanf("%ld", &read) == 1) {
    sample_t x = (sample_t)read;
    int i;
    for (i = 0; i < STAGES; ++i) {
      const sample_t *c = COEFFICIENTS + per_stage * i;
      const sample_t factors[5] = {c[0], c[b1_at], c[b1_at + 1], c[b1_at + 2], c[b1_at + 3]};
      const sample_t values[5] = {x, x1[i], x2[i], y1[i], y2[i]};
      exact_t exact = 0;
      uint64_t sum = 0;
      sample_t y;
      int k;
      for (k = 0; k < 5; ++k) {
        const int64_t product = (int64_t)factors[k] * values[k];
        exact += product;
        sum += (uint64_t)product;
      }
      y = result(exact, sum);
      x2[i] = x1[i];
      x1[i] = x;
      y2[i] = y1[i];
      y1[i] = y;
      x = y;
    }
    printf("%ld\n", (long)x);
  }
  printf("overflows %ld\n", overflows);
  return 0;
}
