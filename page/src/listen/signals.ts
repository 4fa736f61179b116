// Signals to listen through a filter to. Each is one turn of a loop, the same every time.

import { transform } from './fourier.ts';

/** The power of signals, of full scale: -20 dB. */
const power = 0.01;

/** Frequencies in Hz from which signals have equal power in each octave. */
const lowest = 20;

/** Some 5 s. */
function loopLength(rate: number): number {
  return 2 ** Math.round(Math.log2(5 * rate));
}

/** Numbers from 0 to 1 that look random: Marsaglia's xorshift, "Xorshift RNGs", 2003. */
function random(): () => number {
  let state = 2463534242;
  return () => {
    state ^= state << 13;
    state ^= state >>> 17;
    state ^= state << 5;
    return (state >>> 0) / 2 ** 32;
  };
}

export function whiteNoise(rate: number): Float32Array<ArrayBuffer> {
  const next = random();
  // Between -p and p the power is p^2 / 3.
  const peak = Math.sqrt(3 * power);
  return Float32Array.from({ length: loopLength(rate) }, () => peak * (2 * next() - 1));
}

/** 3 dB less in each octave, from `lowest` on: made of its spectrum, so that its end fits its
 *  beginning. */
export function pinkNoise(rate: number): Float32Array<ArrayBuffer> {
  const size = loopLength(rate);
  const next = random();
  const re = new Float64Array(size);
  const im = new Float64Array(size);
  let sum = 0;
  for (let k = Math.ceil((lowest * size) / rate); k < size / 2; ++k) {
    const amplitude = Math.sqrt(1 / k);
    const phase = 2 * Math.PI * next();
    re[k] = amplitude * Math.cos(phase);
    im[k] = amplitude * Math.sin(phase);
    // The real part of the transform has half the square of each line.
    sum += 1 / (2 * k);
  }
  transform(re, im);
  const scale = Math.sqrt(power / sum);
  return Float32Array.from(re, (sample) => scale * sample);
}

/** A sine that takes as long for each octave, from `lowest` to near the Nyquist frequency. */
export function sweep(rate: number): Float32Array<ArrayBuffer> {
  const size = 2 * loopLength(rate);
  const octaves = Math.log2((0.49 * rate) / lowest);
  const fade = Math.round(0.02 * rate);
  // The phase is the integral of lowest 2^(octaves t / T).
  const turns = (lowest * size) / rate / (octaves * Math.LN2);
  return Float32Array.from({ length: size }, (_, i) => {
    const phase = 2 * Math.PI * turns * (2 ** ((octaves * i) / size) - 1);
    const edge = Math.min(1, i / fade, (size - 1 - i) / fade);
    return Math.sqrt(2 * power) * edge * Math.sin(phase);
  });
}

/** One sample of half of full scale, twice a second. */
export function clicks(rate: number): Float32Array<ArrayBuffer> {
  const samples = new Float32Array(Math.round(rate / 2));
  samples[0] = 0.5;
  return samples;
}
