// A filter that can be exchanged while it sounds. The new cascade first runs through what was heard
// lately, a part of it with each block, so that it is not heard starting from rest; then the old
// one fades into it.

import { Cascade } from './cascade.ts';
import type { History } from './history.ts';
import { Limiter } from './limiter.ts';

/** In seconds. */
export const fadeTime = 0.02;

/** What may be computed within a block for catching up, and all in all: samples times sections. */
const stepsPerBlock = 60_000;
const stepsAtMost = 2_000_000;

/** A cascade whose output is so large is growing without bound. */
const runaway = 1e6;

export interface Filter {
  /** b0 b1 b2 a1 a2 of each section. */
  readonly sections: Float64Array;
  /** What the output is multiplied by. */
  readonly gain: number;
}

interface Playing {
  readonly filter: Filter;
  readonly cascade: Cascade;
}

interface Coming extends Playing {
  /** How many samples of the past are left to catch up with. */
  behind: number;
  /** How many samples of the fade are done. */
  faded: number;
}

function equal(a: Float64Array, b: Float64Array): boolean {
  return a.length === b.length && a.every((value, index) => value === b[index]);
}

export class Voice {
  readonly #history: History;
  readonly #channels: number;
  readonly #fade: Float64Array;
  readonly #limiter: Limiter;
  #now: Playing | undefined;
  #coming: Coming | undefined;
  #waiting: Filter | undefined;
  #ranAway = false;
  // The end of the last block, and how much of the way from it to silence is done.
  #last: readonly number[] = [];
  #died = 0;

  constructor(history: History, channels: number, rate: number) {
    this.#history = history;
    this.#channels = channels;
    this.#limiter = new Limiter(rate);
    // It begins and ends without a corner.
    const length = Math.ceil(fadeTime * rate);
    this.#fade = Float64Array.from(
      { length },
      (_, i) => 0.5 - 0.5 * Math.cos((Math.PI * (i + 1)) / (length + 1)),
    );
  }

  /** Whether there is a filter. */
  get has(): boolean {
    return this.#now !== undefined;
  }

  /** Whether the filter's output grew without bound: it is silent until there is another. */
  get ranAway(): boolean {
    return this.#ranAway;
  }

  /** Takes a filter, or none. While one fades in, only the newest of others is kept. */
  set(filter: Filter | undefined): void {
    if (!filter) {
      this.#now = this.#coming = this.#waiting = undefined;
      this.#ranAway = false;
    } else if (this.#coming && !this.#ranAway) {
      this.#waiting = filter;
    } else {
      this.#take(filter);
    }
  }

  #take(filter: Filter): void {
    const cascade = new Cascade(filter.sections, this.#channels);
    const limit = Math.max(4096, Math.floor(stepsAtMost / Math.max(1, cascade.count)));
    const coming = {
      filter,
      cascade,
      behind: Math.min(this.#history.filled, this.#history.size / 2, limit),
      faded: 0,
    };
    const now = this.#now;
    if (!now || this.#ranAway) {
      // Nothing is heard of it yet.
      this.#now = { filter, cascade };
      this.#coming = this.#waiting = undefined;
      this.#ranAway = false;
      return;
    }
    if (equal(now.filter.sections, filter.sections)) {
      if (now.filter.gain === filter.gain) return;
      cascade.takeStates(now.cascade);
      coming.behind = 0;
    }
    this.#coming = coming;
  }

  /** Filters a block of each channel in its place. Returns whether it was limited. */
  run(channels: readonly Float64Array[]): boolean {
    if (this.#ranAway && this.#waiting) this.#take(this.#waiting);
    const now = this.#now;
    if (!now || this.#ranAway) {
      this.#dieAway(channels);
      return false;
    }
    const coming = this.#coming;
    const fading = coming !== undefined && this.#caughtUp(coming, channels[0]!.length);
    if (this.#ranAway) {
      this.#dieAway(channels);
      return false;
    }
    const others = fading ? channels.map((samples) => samples.slice()) : [];
    this.#filter(now, channels);
    if (fading) {
      this.#filter(coming, others);
      this.#mix(coming, channels, others);
    }
    const limited = this.#limiter.run(channels);
    this.#last = channels.map((samples) => samples.at(-1)!);
    this.#died = 0;
    return limited;
  }

  // From where the output was to silence, without a jump.
  #dieAway(channels: readonly Float64Array[]): void {
    const fade = this.#fade;
    channels.forEach((samples, channel) => {
      const last = this.#last[channel] ?? 0;
      for (let i = 0; i < samples.length; ++i)
        samples[i] = last * (1 - (fade[this.#died + i] ?? 1));
    });
    this.#died = Math.min(this.#died + channels[0]!.length, fade.length);
  }

  #caughtUp(coming: Coming, length: number): boolean {
    const part = Math.max(
      4 * length,
      Math.floor(stepsPerBlock / Math.max(1, coming.cascade.count)),
    );
    const step = Math.min(coming.behind, part);
    const samples = new Float64Array(step);
    for (let channel = 0; channel < this.#channels; ++channel) {
      this.#history.read(channel, coming.behind, samples);
      coming.cascade.run(channel, samples);
      if (!(Math.abs(samples.at(-1) ?? 0) < runaway)) this.#ranAway = true;
    }
    coming.behind -= step;
    if (coming.behind === 0) return true;
    // The present block will be the past then.
    coming.behind += length;
    return false;
  }

  #filter(playing: Playing, channels: readonly Float64Array[]): void {
    const { gain } = playing.filter;
    channels.forEach((samples, channel) => {
      playing.cascade.run(channel, samples);
      for (let i = 0; i < samples.length; ++i) {
        const y = samples[i]! * gain;
        // False of NaN, too.
        if (Math.abs(y) < runaway) {
          samples[i] = y;
          continue;
        }
        this.#ranAway = true;
        samples[i] = y > 0 ? runaway : -runaway;
      }
    });
  }

  #mix(coming: Coming, channels: readonly Float64Array[], others: readonly Float64Array[]): void {
    const fade = this.#fade;
    channels.forEach((samples, channel) => {
      const other = others[channel]!;
      for (let i = 0; i < samples.length; ++i) {
        const weight = fade[coming.faded + i] ?? 1;
        samples[i] = samples[i]! + weight * (other[i]! - samples[i]!);
      }
    });
    coming.faded += channels[0]!.length;
    if (coming.faded < fade.length) return;
    this.#now = coming;
    this.#coming = undefined;
    const next = this.#waiting;
    this.#waiting = undefined;
    if (next) this.#take(next);
  }
}
