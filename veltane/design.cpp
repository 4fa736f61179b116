// The design driver: from the settings of a box to its published dictionary.

#include <cmath>
#include <memory>
#include <new>
#include <utility>

#include "filtermath.h"
#include "veltane.h"

int inbang = 0;

namespace {

struct Releases {
  void operator()(t_zpk *zpk) const { zpk_free(zpk); }
  void operator()(_statespace *ss) const { statespace_free(ss); }
  void operator()(t_atomarray *array) const { object_free(array); }
  void operator()(double *block) const { sysmem_freeptr(block); }
  void operator()(t_atom *block) const { sysmem_freeptr(block); }
};

template <typename T>
using Owned = std::unique_ptr<T, Releases>;

// Results of filtermath: a block and how many doubles it holds.
struct Values {
  Owned<double> block;
  int64_t count = 0;
};

struct Roots {
  Values zeros;
  Values poles;
  double gain = 0.0;
};

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

// The host reports exhausted memory by results, the mathematics by an
// exception. A design has one way to end early.
void require(bool done) {
  if (!done) throw std::bad_alloc();
}

// A null symbol would make one comparison of a design fail and the next one not.
t_symbol *symbol(const char *text) {
  t_symbol *interned = gensym(text);
  require(interned != nullptr);
  return interned;
}

// Calls a function of filtermath that stores a block and its count, so that the
// block has an owner from the start.
template <typename Function>
Values obtained(Function &&function) {
  double *block = nullptr;
  int64_t count = 0;
  function(&block, &count);
  return {Owned<double>(block), count};
}

bool is_chebyshev1(const t_veltane *x) { return x->topology == symbol("chebyshev-1"); }

bool is_chebyshev2(const t_veltane *x) { return x->topology == symbol("chebyshev-2"); }

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
  if (x->response == symbol("highpass"))
    filtermath_lp2hp(ss, at.wo);
  else if (x->response == symbol("bandpass"))
    filtermath_lp2bp(ss, at.wo, at.bw);
  else if (x->response == symbol("bandstop"))
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

Owned<t_atomarray> new_array() {
  Owned<t_atomarray> array(atomarray_new(0, nullptr));
  require(array != nullptr);
  return array;
}

void append(t_dictionary *dict, const char *key, Owned<t_atomarray> array, const Values &values) {
  {
    Owned<t_atom> atoms(
        static_cast<t_atom *>(sysmem_newptr(values.count * static_cast<t_long>(sizeof(t_atom)))));
    require(atoms != nullptr);
    for (int64_t i = 0; i < values.count; ++i)
      require(atom_setfloat(&atoms.get()[i], values.block.get()[i]) == RESULT_OK);
    require(object_method_imp(array.get(), symbol("setatoms64"), t_long{values.count},
                              atoms.get()) != nullptr);
  }
  t_symbol *name = symbol(key);  // first: the array is nobody's once released
  require(dictionary_appendatomarray(dict, name, array.release()) == RESULT_OK);
}

void append(t_dictionary *dict, const char *key, t_symbol *value) {
  require(dictionary_appendsym(dict, symbol(key), value) == RESULT_OK);
}

void append(t_dictionary *dict, const char *key, double value) {
  require(dictionary_appendfloat(dict, symbol(key), value) == RESULT_OK);
}

void append_cascade(const t_veltane *x, Owned<t_atomarray> array, const t_zpk *zpk) {
  const Values sos = obtained([&](double **block, int64_t *count) {
    filtermath_zpk2sos(zpk, x->topology, x->response, block, count);
  });
  append(x->dict, "cascade", std::move(array), sos);
}

void publish_header(const t_veltane *x) {
  // A "chebyshev-2" says 0 here, not its attenuation: readers of dictionaries
  // rely on it.
  const double ripple = is_chebyshev1(x) ? x->passband_ripple : 0.0;
  append(x->dict, "schema", symbol("veltane"));
  append(x->dict, "response", x->response);
  append(x->dict, "topology", x->topology);
  append(x->dict, "ripple", ripple);
}

void publish_transfer_function(const t_veltane *x, const _statespace *ss, double wo) {
  Owned<t_atomarray> num_array = new_array();
  Owned<t_atomarray> den_array = new_array();
  double *no_numerator = nullptr;
  int64_t no_count = 0;
  const Values den = obtained([&](double **block, int64_t *count) {
    filtermath_ss2coefs(ss, &no_numerator, &no_count, block, count);
  });
  const Values num = numerator(x, ss, den, wo);
  append(x->dict, "denominator", std::move(den_array), den);
  append(x->dict, "numerator", std::move(num_array), num);
}

void publish_roots(const t_veltane *x, const _statespace *ss, double wo) {
  Owned<t_atomarray> zero_array = new_array();
  Owned<t_atomarray> pole_array = new_array();
  const Roots found = roots(x, ss, wo);
  append(x->dict, "zeroes", std::move(zero_array), found.zeros);
  append(x->dict, "poles", std::move(pole_array), found.poles);
  append(x->dict, "gain", found.gain);
  if (x->sos_output == 0) return;
  Owned<t_atomarray> array = new_array();
  const Owned<t_zpk> zpk(zpk_new_init(found.zeros.block.get(), found.zeros.count,
                                      found.poles.block.get(), found.poles.count, found.gain));
  append_cascade(x, std::move(array), zpk.get());
}

// Without published roots the cascade is that of a filter without any, which
// tells a reader to switch "zpk_output" on.
void publish_empty_cascade(const t_veltane *x) {
  const Owned<t_zpk> zpk(zpk_new_init(nullptr, 0, nullptr, 0, 0.0));
  append_cascade(x, new_array(), zpk.get());
}

void design(t_veltane *x, const Frequencies &at) {
  const Owned<t_zpk> zpk = prototype(x);
  const Owned<_statespace> ss(statespace_new());
  filtermath_zpk2ss(zpk.get(), ss.get());
  transform(x, ss.get(), at);
  filtermath_bilinear(ss.get(), at.fs);

  dictionary_clear(x->dict);
  publish_header(x);
  if (x->tf_output != 0) publish_transfer_function(x, ss.get(), at.wo);
  if (x->zpk_output != 0)
    publish_roots(x, ss.get(), at.wo);
  else if (x->sos_output != 0)
    publish_empty_cascade(x);

  // Last, and nothing of the box is touched afterwards: what is connected may
  // do anything, freeing the box included.
  t_atom name{};
  atom_setsym(&name, x->name);
  outlet_anything(x->outlet, symbol("dictionary"), 1, &name);
}

}  // namespace

void veltane_prewarp(t_symbol *response, double *fs, double *wo, double *bw, double w1, double w2) {
  constexpr double half_pi = 1.5707963267948966;
  const double edge1 = std::tan(w1 * half_pi);
  const double edge2 = std::tan(half_pi * w2);
  if (response == symbol("bandpass") || response == symbol("bandstop")) {
    *wo = std::sqrt(4.0 * edge2 * (edge1 * 4.0));
    *bw = 4.0 * (edge2 - edge1);
  } else {
    *wo = 4.0 * edge1;
  }
  *fs = 2.0;
}

void veltane_bang(t_veltane *x) {
  const Designing designing;
  // Takes a changed sample rate into account, whatever notices have run. A client
  // may rename the box meanwhile, so the dictionary is looked at afterwards.
  object_attr_setdouble_array(x, gensym("frequency"), x->frequency_count, x->frequency);
  if (x->dict == nullptr) {
    object_error(x, "there is no dictionary to publish a filter in");
    return;
  }
  try {
    Frequencies at;
    veltane_prewarp(x->response, &at.fs, &at.wo, &at.bw, x->normalized_frequency[0],
                    x->normalized_frequency[1]);
    design(x, at);
  } catch (...) {
    dictionary_clear(x->dict);
    object_error(x, "could not design a filter: out of memory; the dictionary is empty");
  }
}
