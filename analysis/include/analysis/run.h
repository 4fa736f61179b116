/**
 * Sections run sample by sample, in any structure and any floating-point type: what a program
 * does that uses them, rounding included.
 *
 * T is float, double or anything wider with their operations. Coefficients are rounded to T once.
 * Every sum is formed in the order in which it is written below, so that each rounding has its
 * place. All run from rest.
 *
 * Cost: proportional to the number of sections times that of samples.
 */
#ifndef ANALYSIS_RUN_H
#define ANALYSIS_RUN_H

#include <vector>

#include "analysis/filter.h"
#include "analysis/structure.h"

namespace analysis {

/**
 * Direct form I: y = b0 x + b1 x' + b2 x'' - a1 y' - a2 y'', with the values before in x' and y'.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.3.1.
 * @return as many samples as `signal` has
 */
template <class T>
std::vector<T> run_direct_1(const Sections &filter, std::vector<T> signal) {
  for (const Section &section : filter) {
    const auto b0 = static_cast<T>(section.b0), b1 = static_cast<T>(section.b1),
               b2 = static_cast<T>(section.b2), a1 = static_cast<T>(section.a1),
               a2 = static_cast<T>(section.a2);
    T x1(0), x2(0), y1(0), y2(0);
    for (T &sample : signal) {
      const T x = sample;
      const T y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
      x2 = x1;
      x1 = x;
      y2 = y1;
      y1 = y;
      sample = y;
    }
  }
  return signal;
}

/**
 * Direct form II transposed: y = b0 x + s1;  s1 = b1 x - a1 y + s2;  s2 = b2 x - a2 y.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.4.
 * @return as many samples as `signal` has
 */
template <class T>
std::vector<T> run_direct_2_transposed(const Sections &filter, std::vector<T> signal) {
  for (const Section &section : filter) {
    const auto b0 = static_cast<T>(section.b0), b1 = static_cast<T>(section.b1),
               b2 = static_cast<T>(section.b2), a1 = static_cast<T>(section.a1),
               a2 = static_cast<T>(section.a2);
    T s1(0), s2(0);
    for (T &sample : signal) {
      const T x = sample;
      const T y = b0 * x + s1;
      s1 = b1 * x - a1 * y + s2;
      s2 = b2 * x - a2 * y;
      sample = y;
    }
  }
  return signal;
}

/** The equations of `StateVariable`.
 *  @return as many samples as `signal` has */
template <class T>
std::vector<T> run_state_variable(const std::vector<StateVariable> &filter, std::vector<T> signal) {
  for (const StateVariable &section : filter) {
    const auto g = static_cast<T>(section.g), r = static_cast<T>(section.r),
               h = static_cast<T>(section.h);
    const auto high = static_cast<T>(section.high), band = static_cast<T>(section.band),
               low = static_cast<T>(section.low);
    const T turn(section.mirrored ? -1.0F : 1.0F);
    T s1(0), s2(0);
    for (T &sample : signal) {
      const T hp = h * (sample - r * s1 - s2);
      const T t = g * hp;
      const T bp = t + s1;
      s1 = turn * (bp + t);
      const T u = g * bp;
      const T lp = u + s2;
      s2 = turn * (lp + u);
      sample = high * hp + band * bp + low * lp;
    }
  }
  return signal;
}

}  // namespace analysis

#endif
