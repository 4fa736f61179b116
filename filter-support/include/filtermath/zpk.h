/** A filter as zeros, poles and gain. */
#ifndef FILTERMATH_ZPK_H
#define FILTERMATH_ZPK_H

#include "filtermath/linkage.h"

#ifdef __cplusplus
#include "filtermath/complex64.h"

/** A filter as zeros, poles and gain: gain * prod(s - zeros) / prod(s - poles). */
struct t_zpk {
  t_complex64list zeros;
  t_complex64list poles;
  double gain;
};
#else
/** The same, made and read by the functions alone: its lists are C++ ones. */
typedef struct t_zpk t_zpk;
#endif

FILTERMATH_BEGIN

/** @return a new record without zeros and poles, its gain unset; release with `zpk_free`. */
t_zpk *zpk_new(void);

/**
 * Makes a record from flat root arrays, copied in their order.
 * @param zeros, poles    read, and the caller's still; null only with a count of 0 or less
 * @param zcount, pcount  in doubles, two a root. With an odd one the last root's imaginary
 *                        part is read from behind it. One below 0 counts as 0.
 * @return a new record; release with `zpk_free`
 */
t_zpk *zpk_new_init(const double *zeros, int64_t zcount, const double *poles, int64_t pcount,
                    double gain);

/** Releases a record and its lists; null is accepted. */
void zpk_free(t_zpk *zpk);

FILTERMATH_END

#endif
