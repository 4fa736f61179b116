/**
 * Constants with all digits of the type that they are asked for in. std::numbers is no help: libc++
 * 14 writes its constants as doubles, so that those for long double lack the last digits.
 */
#ifndef ANALYSIS_CONSTANTS_H
#define ANALYSIS_CONSTANTS_H

namespace analysis {

template <class Real>
inline constexpr Real pi = static_cast<Real>(3.14159265358979323846264338327950288L);

template <class Real>
inline constexpr Real ln2 = static_cast<Real>(0.693147180559945309417232121458176568L);

template <class Real>
inline constexpr Real ln10 = static_cast<Real>(2.30258509299404568401799145468436421L);

}  // namespace analysis

#endif
