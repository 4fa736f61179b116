// What happens when an attribute changes.

#include "filtermath/known_symbol.h"
#include "veltane.h"

using filtermath::known_symbol;

namespace {

constexpr double lowest = 0.0001;
constexpr double highest = 0.9999;

double clamped(double w) {
  if (w <= lowest) return lowest;
  if (w >= highest) return highest;
  return w;
}

// In Hz a NaN, which is what 0 Hz at a sample rate of 0 gives, becomes the
// lowest cutoff. As a normalised cutoff it is the user's own, and passes.
double clamped_quotient(double w) { return w >= lowest ? clamped(w) : lowest; }

void normalize_frequencies(t_veltane *x) {
  if (x->units == known_symbol<"radians">()) {
    object_error(x, "oops -- haven't implemented support for radians yet");
    return;
  }
  const t_symbol *in_hertz = known_symbol<"hertz">();
  if (in_hertz == nullptr) return;  // rather the old cutoffs than Hz read as fractions
  const bool hertz = x->units == in_hertz;
  const double half = static_cast<double>(x->actual_samplerate) * 0.5;
  for (int i = 0; i < 2; ++i)
    x->normalized_frequency[i] =
        hertz ? clamped_quotient(x->frequency[i] / half) : clamped(x->frequency[i]);
}

}  // namespace

t_long veltane_notify(t_veltane *x, t_symbol * /*s*/, t_symbol *msg, void * /*sender*/,
                      void *data) {
  // Others, such as "editor_closed", need no answer: the box owns its viewer
  // until it opens the next one.
  if (msg != common_symbols->attr_modified) return 0;

  auto *attr = static_cast<t_symbol *>(object_method_imp(data, common_symbols->getname));
  const bool response = attr == known_symbol<"response">();
  const bool samplerate = attr == known_symbol<"samplerate">();

  if (samplerate)
    x->actual_samplerate = x->samplerate >= 1 ? x->samplerate : whole_hertz(sys_getsr());
  if (samplerate || attr == known_symbol<"units">() || attr == known_symbol<"frequency">())
    normalize_frequencies(x);
  if (response) {
    const bool band =
        x->response == known_symbol<"bandpass">() || x->response == known_symbol<"bandstop">();
    x->frequency_count = band ? 2 : 1;
    // The notice that this raises normalises the cutoffs and schedules the
    // design, so the one for the response need not.
    object_attr_setdouble_array(x, known_symbol<"frequency">(), x->frequency_count, x->frequency);
  }

  if (attr != common_symbols->name && x->ready != 0 && !response && inbang == 0) {
    qelem_unset(x->design_task);
    qelem_set(x->design_task);
  }

  if (attr == known_symbol<"topology">()) {
    object_attr_setdisabled(x, known_symbol<"passband_ripple">(),
                            x->topology != known_symbol<"chebyshev-1">());
    object_attr_setdisabled(x, known_symbol<"stopband_attenuation">(),
                            x->topology != known_symbol<"chebyshev-2">());
  }
  return 0;
}
