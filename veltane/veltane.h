/**
 * The class `veltane`: a box that designs a digital IIR filter from its
 * attributes and publishes it in a named dictionary.
 *
 * docs/vocabulary.md says which handler runs when and what `inbang` means.
 */
#ifndef VELTANE_H
#define VELTANE_H

#include "brontal/brontal.h"

extern "C" {

/** One box. Allocated by `object_alloc`, so it starts zero-filled. */
struct t_veltane {
  t_signal_object ob;
  t_outlet *outlet;
  t_symbol *name;     /**< the name under which `dict` is registered */
  t_dictionary *dict; /**< owned; null after a registration that failed */
  void *viewer;       /**< owned; what a double-click opened last */
  t_long ready;       /**< 1 once built: only then do changes schedule designs */
  t_symbol *topology; /**< the filter's family */
  t_symbol *response;
  t_long order;                   /**< of the prototype, 2 to 200 */
  t_symbol *units;                /**< of `frequency` */
  double frequency[2];            /**< the cutoffs as the user gave them */
  double normalized_frequency[2]; /**< as fractions of the Nyquist frequency,
                                       0.0001 to 0.9999, or NaN where the user gave it */
  t_long frequency_count;         /**< how many cutoffs count, 1 or 2 */
  double passband_ripple;         /**< in dB */
  double stopband_attenuation;    /**< in dB */
  t_long samplerate;              /**< in Hz; below 1: that of the audio */
  t_long actual_samplerate;       /**< the one in use, in Hz */
  t_long zpk_output;              /**< 0 or not: which results to publish */
  t_long sos_output;
  t_long tf_output;
  t_qelem *design_task; /**< owned; runs `veltane_bang` */
};

/** The class; null before `ext_main`. */
extern t_class *s_veltane_class;

/**
 * 1 while a box designs, else 0. While it is 1, changes of attributes schedule
 * no design, of any box: a design refreshes attributes itself.
 */
extern int inbang;

/** Builds a box from its arguments. It designs nothing yet. */
void *veltane_new(t_symbol *s, t_long argc, t_atom *argv);

void veltane_free(t_veltane *x);

/** Designs the filter, publishes it and sends the dictionary's name. */
void veltane_bang(t_veltane *x);

/**
 * The analog frequencies of the design.
 * @param response  decides between an edge and a band
 * @param fs        receives the sampling rate for the bilinear transform
 * @param wo        receives the edge, or the geometric mean of the edges
 * @param bw        receives their difference; not written without a band
 * @param w1, w2    cutoffs as fractions of the Nyquist frequency
 */
void veltane_prewarp(t_symbol *response, double *fs, double *wo, double *bw, double w1, double w2);

/** Opens a viewer on the dictionary. */
void veltane_dblclick(t_veltane *x);

/** Explains the inlet and the outlet. */
void veltane_assist(t_veltane *x, void *box, t_long io, t_long index, char *text);

/** Follows the audio's sample rate, unless one is set. */
void veltane_dsp64(t_veltane *x, void *dsp, short *count, double samplerate, t_long maxvectorsize,
                   t_long flags);

/** Keeps derived settings current and schedules a design after a change. */
t_long veltane_notify(t_veltane *x, t_symbol *s, t_symbol *msg, void *sender, void *data);

/** Sets "name": registers the dictionary under it. */
t_result veltane_setname(t_veltane *x, t_attr *attr, t_long argc, t_atom *argv);

}  // extern "C"

/**
 * A sample rate as the whole number of Hz below it. What cannot be such a
 * number becomes one: NaN becomes 0, and what is out of range the nearest.
 */
t_long whole_hertz(double samplerate);

#endif
