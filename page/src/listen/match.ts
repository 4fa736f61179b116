// What a filter does to the power of a signal, so that levels can be matched.

import { sectionSize } from './cascade.ts';
import type { Spectrum } from './spectrum.ts';

/** In dB: what a filter that leaves nothing of a signal is raised by, at most. */
export const mostMatch = 40;

/** |H|^2 at an angle. */
function powerAt(sections: Float64Array, angle: number): number {
  const c = Math.cos(angle);
  const s = Math.sin(angle);
  const c2 = Math.cos(2 * angle);
  const s2 = Math.sin(2 * angle);
  let power = 1;
  for (let k = 0; k < sections.length; k += sectionSize) {
    const [b0, b1, b2, a1, a2] = sections.subarray(k, k + sectionSize) as unknown as [
      number,
      number,
      number,
      number,
      number,
    ];
    power *=
      ((b0 + b1 * c + b2 * c2) ** 2 + (b1 * s + b2 * s2) ** 2) /
      ((1 + a1 * c + a2 * c2) ** 2 + (a1 * s + a2 * s2) ** 2);
  }
  return power;
}

/** Angles all over, close where a pole is near the circle. */
function angles(sections: Float64Array, rate: number): Float64Array {
  const list: number[] = [];
  const points = 512;
  const first = (2 * Math.PI * 1) / rate;
  for (let i = 0; i <= points; ++i) {
    list.push((Math.PI * i) / points, first * (Math.PI / first) ** (i / points));
  }
  for (let k = 0; k < sections.length; k += sectionSize) {
    const a1 = sections[k + 3]!;
    const a2 = sections[k + 4]!;
    const discriminant = a1 * a1 - 4 * a2;
    const radius = discriminant < 0 ? Math.sqrt(a2) : (Math.abs(a1) + Math.sqrt(discriminant)) / 2;
    const angle =
      discriminant < 0 ? Math.atan2(Math.sqrt(-discriminant), -a1) : a1 < 0 ? 0 : Math.PI;
    const width = Math.abs(1 - radius);
    for (let distance = width / 4; distance < Math.PI; distance *= 2)
      list.push(angle - distance, angle + distance);
    list.push(angle);
  }
  return Float64Array.from(list.filter((angle) => angle >= 0 && angle <= Math.PI)).sort();
}

/** The gain of a filter for a signal, as a ratio of amplitudes; not finite if it has none. The
 *  integrals are sums of trapezoids. */
export function gainFor(sections: Float64Array, spectrum: Spectrum, rate: number): number {
  let before = 0;
  let after = 0;
  let last: { angle: number; input: number; output: number } | undefined;
  for (const angle of angles(sections, rate)) {
    const input = spectrum((angle * rate) / (2 * Math.PI));
    const output = input === 0 ? 0 : input * powerAt(sections, angle);
    if (last) {
      before += (angle - last.angle) * (input + last.input);
      after += (angle - last.angle) * (output + last.output);
    }
    last = { angle, input, output };
  }
  return Math.sqrt(after / before);
}

/** What the filtered signal is multiplied by to be as loud as it was. */
export function matchingGain(sections: Float64Array, spectrum: Spectrum, rate: number): number {
  const most = 10 ** (mostMatch / 20);
  const gain = 1 / gainFor(sections, spectrum, rate);
  return Number.isNaN(gain) ? 1 : Math.min(gain, most);
}
