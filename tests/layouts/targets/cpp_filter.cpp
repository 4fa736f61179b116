// Filters numbers with an exported C++ header, one a line, from standard input to standard output.
//
//   HEADER  its name in quotes;  NAME  what it calls the filter;  TYPE  its numbers
#include HEADER

#include <cstdio>

int main() {
  NAME::Filter filter;
  filter(TYPE(1));
  filter.reset();  // what came before is forgotten
  double x;
  while (std::scanf("%lf", &x) == 1)
    std::printf("%.17g\n", static_cast<double>(filter(static_cast<TYPE>(x))));
}
