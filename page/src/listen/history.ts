// The input of the last half second, for a cascade to catch up with.

export class History {
  readonly #rings: readonly Float64Array[];
  #end = 0;
  #filled = 0;

  constructor(channels: number, size: number) {
    this.#rings = Array.from({ length: channels }, () => new Float64Array(size));
  }

  get size(): number {
    return this.#rings[0]!.length;
  }

  /** How many samples are remembered. */
  get filled(): number {
    return this.#filled;
  }

  /** Remembers a block of each channel. */
  push(channels: readonly Float64Array[]): void {
    const length = channels[0]!.length;
    this.#rings.forEach((ring, channel) => {
      const block = channels[channel]!;
      for (let i = 0; i < length; ++i) ring[(this.#end + i) % this.size] = block[i]!;
    });
    this.#end = (this.#end + length) % this.size;
    this.#filled = Math.min(this.#filled + length, this.size);
  }

  /** Writes samples of a channel, of which the first is so many samples ago. */
  read(channel: number, ago: number, into: Float64Array): void {
    const ring = this.#rings[channel]!;
    const start = this.#end - ago + this.size;
    for (let i = 0; i < into.length; ++i) into[i] = ring[(start + i) % this.size]!;
  }
}
