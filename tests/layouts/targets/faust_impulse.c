/* Prints what a program that Faust translated to C makes of an impulse.
 *
 *   PROGRAM  the translation's file in quotes */
#define FAUSTFLOAT double
#include <faust/gui/CInterface.h>

#include PROGRAM

#include <stdio.h>

int main(int argc, char **argv) {
  const int count = argc > 1 ? atoi(argv[1]) : 0;
  const int rate = argc > 2 ? atoi(argv[2]) : 0;
  mydsp *filter = newmydsp();
  double *input = calloc((size_t)count + 1, sizeof *input);
  double *output = calloc((size_t)count + 1, sizeof *output);
  int n;
  if (filter == NULL || input == NULL || output == NULL) return 1;
  if (getNumInputsmydsp(filter) != 1 || getNumOutputsmydsp(filter) != 1) return 2;
  input[0] = 1.0;
  initmydsp(filter, rate);
  computemydsp(filter, count, &input, &output);
  for (n = 0; n < count; ++n) printf("%.17g\n", output[n]);
  free(output);
  free(input);
  deletemydsp(filter);
  return 0;
}
