// The signal as it is, through filter A, and through filter B: one of them is heard, and a change
// fades from one to the other.

import { History } from './history.ts';
import { Limiter } from './limiter.ts';
import { Voice, fadeTime, type Filter } from './voice.ts';

export const choices = ['off', 'a', 'b'] as const;
export type Choice = (typeof choices)[number];

/** What became of some blocks. */
export interface Report {
  /** The largest sample, and the mean of the squares, of what is heard. */
  readonly peak: number;
  readonly power: number;
  /** Whether what is heard had to be limited. */
  readonly limited: boolean;
  /** Whether the filter that is heard grew without bound and is silent. */
  readonly ranAway: boolean;
}

/** A second, rounded up to a power of two; half of it is caught up with. */
function historySize(rate: number): number {
  return 2 ** Math.ceil(Math.log2(rate));
}

export class Mixer {
  readonly #history: History;
  readonly #voices: Readonly<Record<'a' | 'b', Voice>>;
  readonly #limiter: Limiter;
  readonly #weights: Record<Choice, number> = { off: 0, a: 0, b: 0 };
  readonly #blocks: Record<Choice, Float64Array[]> = { off: [], a: [], b: [] };
  readonly #channels: number;
  readonly #step: number;
  #choice: Choice = 'off';
  #peak = 0;
  #sum = 0;
  #samples = 0;
  #limited = false;

  constructor(channels: number, rate: number) {
    this.#channels = channels;
    this.#history = new History(channels, historySize(rate));
    this.#limiter = new Limiter(rate);
    this.#voices = {
      a: new Voice(this.#history, channels, rate),
      b: new Voice(this.#history, channels, rate),
    };
    this.#step = 1 / Math.ceil(fadeTime * rate);
  }

  choose(choice: Choice): void {
    this.#choice = choice;
  }

  set(slot: 'a' | 'b', filter: Filter | undefined): void {
    this.#voices[slot].set(filter);
  }

  /** Takes a block of each channel of the signal, and puts what is heard in its place. */
  run(signal: readonly Float64Array[]): void {
    const blocks = this.#copies(signal);
    const limited: Record<Choice, boolean> = {
      off: this.#limiter.run(blocks.off),
      a: this.#voices.a.run(blocks.a),
      b: this.#voices.b.run(blocks.b),
    };
    this.#history.push(signal);
    const length = signal[0]!.length;
    for (const samples of signal) samples.fill(0);
    for (const choice of choices) {
      const target = choice === this.#choice && this.#canSound(choice) ? 1 : 0;
      const start = this.#weights[choice];
      if (start === 0 && target === 0) continue;
      const weightAt = (i: number) =>
        target === 1 ? Math.min(1, start + i * this.#step) : Math.max(0, start - i * this.#step);
      signal.forEach((samples, channel) => {
        const block = blocks[choice][channel]!;
        for (let i = 0; i < length; ++i) samples[i]! += weightAt(i + 1) * block[i]!;
      });
      this.#weights[choice] = weightAt(length);
      this.#limited ||= limited[choice];
    }
    this.#measure(signal);
  }

  // Kept from block to block, so that there is nothing to clear away while audio runs.
  #copies(signal: readonly Float64Array[]): Readonly<Record<Choice, Float64Array[]>> {
    const { length } = signal[0]!;
    const fit = (block: Float64Array) => block.length === length;
    for (const choice of choices) {
      if (!this.#blocks[choice].every(fit) || this.#blocks[choice].length === 0)
        this.#blocks[choice] = signal.map(() => new Float64Array(length));
      signal.forEach((samples, channel) => this.#blocks[choice][channel]!.set(samples));
    }
    return this.#blocks;
  }

  /** What happened since the last report. */
  report(): Report {
    const report = {
      peak: this.#peak,
      power: this.#samples === 0 ? 0 : this.#sum / this.#samples,
      limited: this.#limited,
      ranAway: this.#choice !== 'off' && this.#voices[this.#choice].ranAway,
    };
    this.#peak = this.#sum = this.#samples = 0;
    this.#limited = false;
    return report;
  }

  // One that ran away dies away by itself.
  #canSound(choice: Choice): boolean {
    return choice === 'off' || this.#voices[choice].has;
  }

  #measure(signal: readonly Float64Array[]): void {
    for (const samples of signal)
      for (const sample of samples) {
        this.#peak = Math.max(this.#peak, Math.abs(sample));
        this.#sum += sample * sample;
      }
    this.#samples += this.#channels * signal[0]!.length;
  }
}
