/**
 * filtermath: the design of digital IIR filters, from an analog lowpass
 * prototype through state space to zeros and poles, sections and polynomials.
 *
 * One design walks through these functions in this order:
 *
 *     filtermath_buttap | cheby1ap | cheby2ap     prototype      t_zpk
 *     filtermath_zpk2ss                           its model      _statespace
 *     filtermath_lp2lp | lp2hp | lp2bp | lp2bs    moved          _statespace
 *     filtermath_bilinear                         made digital   _statespace
 *     filtermath_ss2zpk[_butterworth]             zeros, poles, gain
 *     filtermath_zpk2sos                          sections
 *     filtermath_ss2coefs, filtermath_*num        polynomials
 *
 * `examples/design_lowpass.cpp` shows it done.
 *
 * Conventions, stated once:
 *
 * - Shapes of matrices are columns by rows, in this order, everywhere.
 * - Flat root arrays hold roots as interleaved doubles (real, imaginary, ...).
 *   Their counts count doubles, so a list of n roots has the count 2n.
 * - Polynomials are lists of coefficients with the highest power first.
 * - Frequencies of prototypes and models are angular, on the scale on which
 *   a digital frequency w, a fraction of the Nyquist frequency, lies at
 *   4 tan(w pi / 2): that of a bilinear transform at the sampling rate 2.
 * - Families and responses are symbols, compared by identity with "butterworth",
 *   "chebyshev-1", "chebyshev-2" and "lowpass", "highpass", "bandpass",
 *   "bandstop". An unknown family counts as a Butterworth, an unknown response as a lowpass, unless
 *   a function says otherwise.
 * - A root is real when its imaginary part is exactly 0.0; nothing is rounded.
 * - Arguments are not checked: keeping order, ripple, attenuation and cutoffs
 *   in range is the caller's business. Design functions given settings out of
 *   range yield numbers that are not finite, never a crash; shapes, counts and
 *   indices must be right. Pointers must not be null unless a
 *   function says so.
 * - Exhausted memory raises std::bad_alloc, from every function that allocates. Nothing is
 *   leaked, and pointers, counts and matrices that were to receive a result are left alone.
 *   A model that was being filled or transformed can then only be released.
 * - Costs are in terms of n, the number of states of a model, of roots of a list, of rows of
 *   a matrix. A design up to order 200, with 400 states, takes milliseconds. Unless it says more, a
 *   function needs memory in proportion to what it reads and writes.
 * - Accuracy is stated by what limits it. "A few roundings" are a few units in the last place of
 *   a double, 2.2e-16 of the number; a backward stable computation gives the exact result for
 *   an argument that is off by as little. docs/accuracy.md measures the accuracy of a whole design,
 *   against 50 digits, at orders up to 200.
 * - Nothing here keeps state between calls. Different threads may design at
 *   the same time if the memory calls that they run on allow it.
 *
 * Storage comes from the memory calls of brontal/memory.h, except for `t_zpk`
 * and lists of complex values, which come from the C++ allocator. A block of no
 * elements may be null, as those calls may give none for 0 bytes. Whoever receives a record
 * or an array owns it, and releases it by the function named where it is made.
 *
 * Books cited, by their sections: [OS] Oppenheim and Schafer, Discrete-Time Signal Processing,
 * 3rd edition. [PB] Parks and Burrus, Digital Filter Design. [EvD] Emami-Naeini
 * and Van Dooren, Computation of zeros of linear multivariable systems,
 * Automatica 18 (1982). [GvL] Golub and Van Loan, Matrix Computations, 4th
 * edition. [Kai] Kailath, Linear Systems.
 *
 * The functions with C linkage compile as C11 too, where `t_zpk` is opaque. An exception that
 * meets a caller's C code ends the program, unless that code is compiled with -fexceptions.
 */
#ifndef FILTERMATH_H
#define FILTERMATH_H

#include "filtermath/bilinear.h"
#include "filtermath/matrix64.h"
#include "filtermath/numerators.h"
#include "filtermath/prototypes.h"
#include "filtermath/ss2coefs.h"
#include "filtermath/ss2zpk.h"
#include "filtermath/statespace.h"
#include "filtermath/transformations.h"
#include "filtermath/tzero.h"
#include "filtermath/zpk.h"
#include "filtermath/zpk2sos.h"
#include "filtermath/zpk2ss.h"
#include "filtermath/zpk2tf.h"

#ifdef __cplusplus
#include "filtermath/complex64.h"
#include "filtermath/housh.h"
#include "filtermath/poly.h"
#endif

#endif
