// What the module does with settings without declaring it, and what counts as a good filter.
#ifndef DESIGNER_LIMITS_H
#define DESIGNER_LIMITS_H

namespace designer {

/** Numbers from `lowest` to `highest`, both included. */
struct Range {
  double lowest;
  double highest;
};

/** Where the module keeps cutoffs, as fractions of the Nyquist frequency. */
inline constexpr Range cutoff_range{0.0001, 0.9999};

/** The sample rate, in Hz, that the module uses when its settings give none. */
inline constexpr double audio_samplerate = 48000.0;

/** Noise in dB of the output's peak up to which a filter is good when it runs in doubles, where it
 *  is 200 dB lower if all is well. */
inline constexpr double most_noise_db = -80.0;

/** The same in floats. */
inline constexpr double most_float_noise_db = -60.0;

/** The same in fixed point of 32 bits. */
inline constexpr double most_fixed_32_noise_db = -60.0;

/** The same in fixed point of 16 bits, where few filters reach -60 dB. At -40 dB the error is a
 *  hundredth of the output's peak: less than seven of the sixteen bits are left of the signal, and a
 *  wider type is the better choice. */
inline constexpr double most_fixed_16_noise_db = -40.0;

}  // namespace designer

#endif
