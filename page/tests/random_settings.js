// Settings of all kinds, the same for the same seed.

const families = ['butterworth', 'chebyshev-1', 'chebyshev-2'];
const responses = ['lowpass', 'highpass', 'bandpass', 'bandstop'];

/**
 * The linear congruential generator of Knuth and Lewis (Press et al., Numerical Recipes, 7.1).
 * @param {number} seed
 * @returns {() => number} numbers from 0 to 1
 */
export function random(seed) {
  let state = seed >>> 0;
  return () => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return state / 2 ** 32;
  };
}

/**
 * @param {number} seed
 * @param {number} count
 * @returns {Record<string, (number | string)[]>[]}
 */
export function randomSettings(seed, count) {
  const next = random(seed);
  /** @param {readonly string[]} words */
  const one = (words) => words[Math.floor(next() * words.length)] ?? '';
  return Array.from({ length: count }, (_, i) => {
    const response = one(responses);
    const low = 20 * 500 ** next();
    const two = response.startsWith('band');
    return {
      topology: [one(families)],
      response: [response],
      order: [i === 0 ? 2 : i === 1 ? 200 : Math.round(2 * 100 ** next())],
      frequency: two ? [low, low * (1.2 + 0.8 * next())] : [low],
      passband_ripple: [0.1 + 2.9 * next()],
      stopband_attenuation: [20 + 80 * next()],
    };
  });
}
