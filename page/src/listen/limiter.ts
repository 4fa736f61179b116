// Keeps samples within full scale: down at once, and up again slowly. A signal that never exceeds
// it passes unchanged, to the bit.

/** In seconds: how long the way back takes to fall to a third of what is left. */
const release = 0.1;

export class Limiter {
  #gain = 1;
  readonly #return: number;

  constructor(rate: number) {
    this.#return = 1 - Math.exp(-1 / (release * rate));
  }

  /** Limits all channels alike, in their place. Returns whether it had to. */
  run(channels: readonly Float64Array[]): boolean {
    const length = channels[0]?.length ?? 0;
    let limited = false;
    for (let i = 0; i < length; ++i) {
      let peak = 0;
      for (const samples of channels) peak = Math.max(peak, Math.abs(samples[i]!));
      if (peak * this.#gain > 1) {
        this.#gain = 1 / peak;
        limited = true;
      }
      if (this.#gain === 1) continue;
      // Rounding may leave a product an ulp beyond.
      for (const samples of channels)
        samples[i] = Math.max(-1, Math.min(1, samples[i]! * this.#gain));
      this.#gain += (1 - this.#gain) * this.#return;
      if (1 - this.#gain < 1e-9) this.#gain = 1;
    }
    return limited;
  }
}
