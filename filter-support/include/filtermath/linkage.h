/**
 * How the functions of this library are declared: with C linkage, under their plain names, so that
 * C11 and whatever calls C can call them. Headers whose functions take C++ types do without, and
 * a shared library leaves them out.
 */
#ifndef FILTERMATH_LINKAGE_H
#define FILTERMATH_LINKAGE_H

#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

// Other libraries keep these names to themselves: one that links the archive is not to hand them on.
#if defined(FILTERMATH_SHARED) && defined(__GNUC__)
#define FILTERMATH_EXPORT_BEGIN _Pragma("GCC visibility push(default)")
#define FILTERMATH_EXPORT_END _Pragma("GCC visibility pop")
#else
#define FILTERMATH_EXPORT_BEGIN
#define FILTERMATH_EXPORT_END
#endif

#ifdef __cplusplus
#define FILTERMATH_BEGIN \
  extern "C" {           \
  FILTERMATH_EXPORT_BEGIN
#define FILTERMATH_END  \
  FILTERMATH_EXPORT_END \
  }
#else
#define FILTERMATH_BEGIN
#define FILTERMATH_END
#endif

#endif
