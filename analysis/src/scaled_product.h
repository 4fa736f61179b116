/** A complex product with its binary exponent beside it, so that no number of factors
 *  overflows or vanishes. */
#ifndef ANALYSIS_SCALED_PRODUCT_H
#define ANALYSIS_SCALED_PRODUCT_H

#include "unit_circle.h"

namespace analysis {

class ScaledProduct {
 public:
  void multiply(const WideComplex &factor);
  void divide(const WideComplex &factor);

  /** The product itself, rounded to doubles. */
  Complex value() const;

  /** 20 log10 of its magnitude. */
  double db() const;

  /** Its angle in (-pi, pi]. */
  double angle() const;

 private:
  WideComplex quotient() const;

  struct Scaled {
    WideComplex mantissa{1, 0};
    long exponent = 0;

    void multiply(const WideComplex &factor);
  };

  Scaled numerator_, denominator_;
};

}  // namespace analysis

#endif
