// Ranges of frequency: places within them, and what zooming and panning make of them.

import type { Axis } from '../session/protocol.ts';

export type Range = Pick<Axis, 'low' | 'high' | 'logarithmic'>;

function forward({ logarithmic }: Range, value: number): number {
  return logarithmic ? Math.log(value) : value;
}

function backward({ logarithmic }: Range, value: number): number {
  return logarithmic ? Math.exp(value) : value;
}

/** Where a value lies: 0 at the low end, 1 at the high one. */
export function placeOf(range: Range, value: number): number {
  const low = forward(range, range.low);
  return (forward(range, value) - low) / (forward(range, range.high) - low);
}

/** The value at a place, which may lie outside of 0 to 1. */
export function valueAt(range: Range, place: number): number {
  const low = forward(range, range.low);
  return backward(range, low + place * (forward(range, range.high) - low));
}

/** As many times as long by `factor`, with the value at a place staying there. */
export function zoomed(range: Range, factor: number, place: number): Range {
  return {
    ...range,
    low: valueAt(range, place - place * factor),
    high: valueAt(range, place + (1 - place) * factor),
  };
}

/** Moved by a part of its length. */
export function panned(range: Range, part: number): Range {
  return { ...range, low: valueAt(range, part), high: valueAt(range, 1 + part) };
}

/** The part of a range within limits; as long as before where it fits, pushed in from an end. */
export function within(range: Range, limits: Range): Range {
  const begin = placeOf(limits, Math.max(range.low, range.logarithmic ? Number.MIN_VALUE : 0));
  const end = placeOf(limits, range.high);
  const length = Math.min(1, end - begin);
  const low = Math.min(Math.max(begin, 0), 1 - length);
  if (length === 1) return limits;
  return { ...limits, low: valueAt(limits, low), high: valueAt(limits, low + length) };
}

/** Whether it is too short for a curve to be told from a straight line. */
export function isTooShort(range: Range, limits: Range): boolean {
  return placeOf(limits, range.high) - placeOf(limits, range.low) < 1e-4;
}
