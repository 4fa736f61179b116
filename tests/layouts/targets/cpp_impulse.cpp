// Prints what an exported C++ header makes of an impulse.
//
//   HEADER  its name in quotes;  NAME  what it calls the filter;  TYPE  its numbers
#include HEADER

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv) {
  NAME::Filter filter;
  filter(TYPE(1));
  filter.reset();  // what came before is forgotten
  const long count = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 0;
  for (long n = 0; n < count; ++n)
    std::printf("%.17g\n", static_cast<double>(filter(n == 0 ? TYPE(1) : TYPE(0))));
}
