// How the power of a signal lies over frequency.

import { transform } from './fourier.ts';

/** Power in each Hz, up to a factor, at a frequency in Hz. */
export type Spectrum = (hz: number) => number;

export const flat: Spectrum = () => 1;

/** Equal power in each octave from 20 Hz on. */
export const perOctave: Spectrum = (hz) => (hz < 20 ? 0 : 1 / hz);

const segment = 8192;
const mostSegments = 64;

/** That of samples: the mean of segments under Hann windows (Welch, "The use of fast Fourier
 *  transform for the estimation of power spectra", 1967). */
export function spectrumOf(samples: Float32Array, rate: number): Spectrum {
  const sums = new Float64Array(segment / 2 + 1);
  const segments = Math.max(1, Math.min(mostSegments, Math.floor(samples.length / segment)));
  for (let s = 0; s < segments; ++s) {
    const start = Math.floor((s * Math.max(0, samples.length - segment)) / segments);
    const re = Float64Array.from(
      { length: segment },
      (_, i) => (samples[start + i] ?? 0) * (1 - Math.cos((2 * Math.PI * i) / segment)),
    );
    const im = new Float64Array(segment);
    transform(re, im);
    for (let k = 0; k < sums.length; ++k) sums[k]! += re[k]! ** 2 + im[k]! ** 2;
  }
  return (hz) => {
    const place = Math.min(Math.max(0, (hz * segment) / rate), sums.length - 1);
    const k = Math.min(Math.floor(place), sums.length - 2);
    return sums[k]! + (place - k) * (sums[k + 1]! - sums[k]!);
  };
}
