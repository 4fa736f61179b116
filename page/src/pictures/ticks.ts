// Where an axis has its ticks, and what stands beside them.

import { significant, signed } from './quantities.ts';
import type { Range } from './range.ts';

export interface Tick {
  readonly value: number;
  /** Empty where there is no room for one. */
  readonly text: string;
}

const decimalSteps = [1, 2, 5, 10];
const angleSteps = [1, 2, 5, 10, 15, 30, 45, 90, 180];

/** The least step of a kind that makes at most so many of it. */
function stepFor(length: number, most: number, isAngle: boolean): number {
  const least = length / Math.max(most, 1);
  if (isAngle && least > 1 && least <= 180)
    return angleSteps.find((step) => step >= least * 0.9999) ?? 180;
  if (isAngle && least > 180) return 180 * Math.ceil(least / 180);
  const decade = 10 ** Math.floor(Math.log10(least));
  return decade * (decimalSteps.find((step) => step * decade >= least * 0.9999) ?? 10);
}

function decimals(step: number): number {
  return Math.min(20, Math.max(0, -Math.floor(Math.log10(step) + 1e-9)));
}

/** Thousands of Hz as "k", so that what stands below an axis is short. */
function shortText(value: number, step: number, unit: string): string {
  const size = Math.abs(value);
  if (unit === 'Hz' && size >= 1e6) return `${significant(value / 1e6, 6)}M`;
  if (unit === 'Hz' && size >= 1e3) return `${significant(value / 1e3, 6)}k`;
  if (size >= 1e6) return signed(value.toExponential()).replace('+', '');
  const digits = decimals(step);
  if (digits > 5) return size < step / 2 ? '0' : signed(value.toExponential());
  return signed(value.toFixed(digits));
}

function linearTicks({ low, high }: Range, most: number, unit: string): Tick[] {
  const step = stepFor(high - low, most, unit === '°');
  const ticks: Tick[] = [];
  // From whole multiples, so that no error adds up.
  for (let index = Math.ceil(low / step - 1e-6); index * step <= high + step * 1e-6; ++index) {
    const value = Number((index * step).toPrecision(12));
    ticks.push({ value, text: shortText(value, step, unit) });
  }
  return ticks;
}

/** How many decades lie between two labels, and which digits have one. */
function labelledDigits(labelsInDecade: number): { digits: readonly number[]; decades: number } {
  if (labelsInDecade >= 9) return { digits: [1, 2, 3, 4, 5, 6, 7, 8, 9], decades: 1 };
  if (labelsInDecade >= 4) return { digits: [1, 2, 5], decades: 1 };
  if (labelsInDecade >= 1) return { digits: [1], decades: 1 };
  return { digits: [1], decades: Math.ceil(1 / labelsInDecade) };
}

function logarithmicTicks({ low, high }: Range, most: number, unit: string): Tick[] {
  const decadesShown = Math.log10(high / low);
  const { digits, decades } = labelledDigits(most / decadesShown);
  const ticks: Tick[] = [];
  const last = Math.floor(Math.log10(high) + 1e-9);
  for (let exponent = Math.floor(Math.log10(low)); exponent <= last; ++exponent)
    for (let digit = 1; digit <= 9; ++digit) {
      const value = Number(`${digit}e${exponent}`);
      if (value < low * (1 - 1e-9) || value > high * (1 + 1e-9)) continue;
      if (digit > 1 && decades > 1) continue;
      const isLabelled = digits.includes(digit) && exponent % decades === 0;
      ticks.push({ value, text: isLabelled ? shortText(value, value, unit) : '' });
    }
  return ticks;
}

/**
 * @param most  how many labels there is room for
 * @param unit  as in "Hz" and "°", which have steps and texts of their own
 */
export function ticksOf(range: Range, most: number, unit = ''): Tick[] {
  if (!(range.low < range.high)) return [];
  // What shows a part of a decade is best read like a linear axis.
  if (range.logarithmic && range.high / range.low > 4) return logarithmicTicks(range, most, unit);
  return linearTicks(range, most, unit);
}
