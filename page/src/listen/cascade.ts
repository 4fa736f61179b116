// Second-order sections in direct form II transposed, in doubles:
//   y = b0 x + s1,  s1 = b1 x - a1 y + s2,  s2 = b2 x - a2 y

/** How many numbers a section has: b0 b1 b2 a1 a2. */
export const sectionSize = 5;

/** States that are smaller are on their way to numbers that processors are slow with. */
const smallest = 1e-290;

export class Cascade {
  readonly sections: Float64Array;
  readonly #states: readonly Float64Array[];

  /** At rest. */
  constructor(sections: Float64Array, channels: number) {
    this.sections = sections;
    this.#states = Array.from(
      { length: channels },
      () => new Float64Array((2 * sections.length) / sectionSize),
    );
  }

  get count(): number {
    return this.sections.length / sectionSize;
  }

  /** Goes on where another with equal sections is. */
  takeStates(other: Cascade): void {
    this.#states.forEach((states, channel) => states.set(other.#states[channel]!));
  }

  /** Filters samples in their place. */
  run(channel: number, samples: Float64Array): void {
    const { sections } = this;
    const states = this.#states[channel]!;
    for (let k = 0, s = 0; k < sections.length; k += sectionSize, s += 2) {
      const b0 = sections[k]!;
      const b1 = sections[k + 1]!;
      const b2 = sections[k + 2]!;
      const a1 = sections[k + 3]!;
      const a2 = sections[k + 4]!;
      let s1 = states[s]!;
      let s2 = states[s + 1]!;
      for (let i = 0; i < samples.length; ++i) {
        const x = samples[i]!;
        const y = b0 * x + s1;
        s1 = b1 * x - a1 * y + s2;
        s2 = b2 * x - a2 * y;
        samples[i] = y;
      }
      states[s] = Math.abs(s1) < smallest ? 0 : s1;
      states[s + 1] = Math.abs(s2) < smallest ? 0 : s2;
    }
  }
}
