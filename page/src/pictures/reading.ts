// The values of a curve between its points.

import type { Curve } from '../session/protocol.ts';

/** The index of the first x that is not less; ascending. */
function firstFrom(x: Float64Array, value: number): number {
  let begin = 0;
  let end = x.length;
  while (begin < end) {
    const middle = (begin + end) >> 1;
    if ((x[middle] ?? NaN) < value) begin = middle + 1;
    else end = middle;
  }
  return begin;
}

/** On the line between two points; NaN outside of the curve and where it is interrupted. */
export function valueOn({ x, y }: Curve, at: number): number {
  const after = firstFrom(x, at);
  const x1 = x[after];
  const y1 = y[after];
  if (x1 === undefined || y1 === undefined) return NaN;
  if (x1 === at) return y1;
  const x0 = x[after - 1];
  const y0 = y[after - 1];
  if (x0 === undefined || y0 === undefined) return NaN;
  return y0 + ((at - x0) / (x1 - x0)) * (y1 - y0);
}

/** The index of the point that is nearest along x; undefined for an empty curve. */
export function nearestOn({ x }: Curve, at: number): number | undefined {
  if (x.length === 0) return undefined;
  const after = Math.min(firstFrom(x, at), x.length - 1);
  const before = Math.max(after - 1, 0);
  return at - (x[before] ?? NaN) < (x[after] ?? NaN) - at ? before : after;
}

export interface Extremes {
  readonly lowest: number;
  readonly highest: number;
  /** Where the highest one is. */
  readonly at: number;
}

/** Over a part of x; undefined where the curve has no value there. */
export function extremesOn(curve: Curve, from: number, to: number): Extremes | undefined {
  const ends = [from, to].map((x) => [x, valueOn(curve, x)] as const);
  let lowest = Infinity;
  let highest = -Infinity;
  let at = NaN;
  const take = (x: number, y: number) => {
    if (y < lowest) lowest = y;
    if (y > highest) [highest, at] = [y, x];
  };
  for (const [x, y] of ends) take(x, y);
  for (let index = firstFrom(curve.x, from); index < curve.x.length; ++index) {
    const x = curve.x[index] ?? NaN;
    if (x > to) break;
    take(x, curve.y[index] ?? NaN);
  }
  return Number.isNaN(at) ? undefined : { lowest, highest, at };
}
