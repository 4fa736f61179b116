/* Prints what an exported C header makes of an impulse.
 *
 *   HEADER  its name in quotes;  NAME  what it calls the filter;  TYPE  its numbers */
#include HEADER

#include <stdio.h>
#include <stdlib.h>

#define JOINED(a, b) a##b
#define JOIN(a, b) JOINED(a, b)

int main(int argc, char **argv) {
  JOIN(NAME, _state) state = {{0}, {0}};
  const long count = argc > 1 ? strtol(argv[1], NULL, 10) : 0;
  long n;
  for (n = 0; n < count; ++n)
    printf("%.17g\n", (double)JOIN(NAME, _process)(&state, n == 0 ? (TYPE)1 : (TYPE)0));
  return 0;
}
