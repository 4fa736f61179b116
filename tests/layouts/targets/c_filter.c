/* Filters numbers with an exported C header, one a line, from standard input to standard output.
 *
 *   HEADER  its name in quotes;  NAME  what it calls the filter;  TYPE  its numbers;
 *   ZEROS   what its comment initialises the state with */
#include HEADER

#include <stdio.h>

#define JOINED(a, b) a##b
#define JOIN(a, b) JOINED(a, b)

int main(void) {
  JOIN(NAME, _state) state = ZEROS;
  double x;
  while (scanf("%lf", &x) == 1) printf("%.17g\n", (double)JOIN(NAME, _process)(&state, (TYPE)x));
  return 0;
}
