// The design driver: from the settings of a box to its published dictionary.

#include <cmath>

#include "filter.h"

int inbang = 0;

namespace veltane {
namespace {

// The analog frequencies, see `veltane_prewarp`.
struct Frequencies {
  double fs = 0.0;
  double wo = 0.0;
  double bw = 0.0;
};

// While one lives, `inbang` is set. Designs nest: what is connected to one box may
// bang another, and the outer design goes on afterwards.
class Designing {
 public:
  Designing() { inbang = 1; }
  ~Designing() { inbang = before_; }
  Designing(const Designing &) = delete;
  Designing &operator=(const Designing &) = delete;

 private:
  int before_ = inbang;
};

// Calls a function of filtermath that stores a block and its count, so that the
// block has an owner from the start.
template <typename Function>
Values obtained(Function &&function) {
  double *block = nullptr;
  int64_t count = 0;
  function(&block, &count);
  return {Owned<double>(block), count};
}

int low_32_bits(t_long order) { return static_cast<int>(static_cast<uint32_t>(order)); }

Owned<t_zpk> prototype(const t_veltane *x) {
  const int order = low_32_bits(x->order);
  t_zpk *zpk = nullptr;
  if (is_chebyshev1(x))
    filtermath_cheby1ap(order, &zpk, x->passband_ripple);
  else if (is_chebyshev2(x))
    filtermath_cheby2ap(order, &zpk, x->stopband_attenuation);
  else
    filtermath_buttap(order, &zpk);
  return Owned<t_zpk>(zpk);
}

void transform(const t_veltane *x, _statespace *ss, const Frequencies &at) {
  if (x->response == required_symbol<"highpass">())
    filtermath_lp2hp(ss, at.wo);
  else if (x->response == required_symbol<"bandpass">())
    filtermath_lp2bp(ss, at.wo, at.bw);
  else if (x->response == required_symbol<"bandstop">())
    filtermath_lp2bs(ss, x->topology, at.wo, at.bw);
  else
    filtermath_lp2lp(ss, at.wo);
}

Roots roots(const t_veltane *x, const _statespace *ss, double wo) {
  double *zeros = nullptr;
  double *poles = nullptr;
  Roots found;
  if (is_chebyshev2(x))
    filtermath_ss2zpk(ss, &zeros, &found.zeros.count, &poles, &found.poles.count, &found.gain);
  else
    filtermath_ss2zpk_butterworth(ss, x->response, &zeros, &found.zeros.count, &poles,
                                  &found.poles.count, &found.gain, wo);
  found.zeros.block.reset(zeros);
  found.poles.block.reset(poles);
  return found;
}

Values numerator(const t_veltane *x, const _statespace *ss, const Values &den, double wo) {
  const int order = low_32_bits(x->order);
  return obtained([&](double **num, int64_t *count) {
    if (is_chebyshev1(x))
      filtermath_cheby1num(x->response, order, den.block.get(), den.count, num, count, wo,
                           x->passband_ripple);
    else if (is_chebyshev2(x))
      filtermath_cheby2num(ss, num, count);
    else
      filtermath_buttnum(x->response, order, den.block.get(), den.count, num, count, wo);
  });
}

TransferFunction transfer_function(const t_veltane *x, const _statespace *ss, double wo) {
  double *no_numerator = nullptr;
  int64_t no_count = 0;
  TransferFunction found;
  found.denominator = obtained([&](double **block, int64_t *count) {
    filtermath_ss2coefs(ss, &no_numerator, &no_count, block, count);
  });
  found.numerator = numerator(x, ss, found.denominator, wo);
  return found;
}

Values cascade(const t_veltane *x, const Roots &of) {
  const Owned<t_zpk> zpk(zpk_new_init(of.zeros.block.get(), of.zeros.count, of.poles.block.get(),
                                      of.poles.count, of.gain));
  return obtained([&](double **block, int64_t *count) {
    filtermath_zpk2sos(zpk.get(), x->topology, x->response, block, count);
  });
}

// Why a design ended early. Only for a handler of its exception, and without
// asking for memory, which may be what it ran out of.
const char *reason() noexcept {
  try {
    throw;
  } catch (const std::bad_alloc &) {
    return "out of memory";
  } catch (const HostFailure &failure) {
    return failure.what;
  } catch (...) {
    return "for an unforeseen reason";
  }
}

}  // namespace

Filter designed(const t_veltane *x) {
  Frequencies at;
  veltane_prewarp(x->response, &at.fs, &at.wo, &at.bw, x->normalized_frequency[0],
                  x->normalized_frequency[1]);
  Filter filter;
  filter.prototype = prototype(x);
  filter.model.reset(statespace_new());
  _statespace *ss = filter.model.get();
  filtermath_zpk2ss(filter.prototype.get(), ss);
  transform(x, ss, at);
  filtermath_bilinear(ss, at.fs);

  if (x->tf_output != 0) filter.transfer_function = transfer_function(x, ss, at.wo);
  if (x->zpk_output != 0) filter.roots = roots(x, ss, at.wo);
  // Without published roots the cascade is that of a filter without any, which shows a reader that
  // "zpk_output" is to be switched on.
  const Roots none;
  if (x->sos_output != 0) filter.cascade = cascade(x, filter.roots ? *filter.roots : none);
  return filter;
}

}  // namespace veltane

void veltane_prewarp(t_symbol *response, double *fs, double *wo, double *bw, double w1, double w2) {
  constexpr double half_pi = 1.5707963267948966;
  const double edge1 = std::tan(w1 * half_pi);
  const double edge2 = std::tan(half_pi * w2);
  if (response == veltane::required_symbol<"bandpass">() ||
      response == veltane::required_symbol<"bandstop">()) {
    *wo = std::sqrt(4.0 * edge2 * (edge1 * 4.0));
    *bw = 4.0 * (edge2 - edge1);
  } else {
    *wo = 4.0 * edge1;
  }
  *fs = 2.0;
}

void veltane_bang(t_veltane *x) {
  const veltane::Designing designing;
  // Takes a changed sample rate into account, whatever notices have run. A client
  // may rename the box meanwhile, so the dictionary is looked at afterwards.
  object_attr_setdouble_array(x, filtermath::known_symbol<"frequency">(), x->frequency_count,
                              x->frequency);
  if (x->dict == nullptr) {
    object_error(x, "there is no dictionary to publish a filter in");
    return;
  }
  // Nothing of the last filter goes before there is a new one.
  veltane::Filter filter;
  try {
    filter = veltane::designed(x);
    veltane::require(dictionary_clear(x->dict), "the host did not clear the dictionary");
  } catch (...) {
    object_error(x, "could not design a filter: %s; the dictionary is unchanged",
                 veltane::reason());
    return;
  }
  try {
    veltane::publish(x, filter);
  } catch (...) {
    const bool empty = dictionary_clear(x->dict) == RESULT_OK;
    object_error(x, "could not publish the filter: %s; the dictionary is %s", veltane::reason(),
                 empty ? "empty" : "incomplete");
  }
}
