// What is measured of two filters, in rows.

import { strings } from '../strings.ts';

const words = strings.compare;

type Measured = Readonly<Record<string, unknown>>;

function number(value: unknown): number | undefined {
  return typeof value === 'number' ? value : undefined;
}

function rounded(value: number, digits: number): string {
  const small = value !== 0 && Math.abs(value) < 1e-3;
  return small ? value.toExponential(digits - 1) : String(Number(value.toPrecision(digits)));
}

/** A list of numbers or one of them, in a unit. */
function inUnit(unit: string, digits = 6): (value: unknown) => string {
  return (value) => {
    const numbers = (Array.isArray(value) ? value : [value]).map(number);
    const known = numbers.filter((one) => one !== undefined);
    if (known.length === 0) return words.none;
    return `${known.map((one) => rounded(one, digits)).join(', ')} ${unit}`.trim();
  };
}

function yesOrNo(value: unknown): string {
  return typeof value === 'boolean' ? words.yesOrNo(value) : words.none;
}

/** By the name that the verdict gives them. */
const measures: Readonly<Record<string, (value: unknown) => string>> = {
  poles: inUnit(''),
  sections: inUnit(''),
  samplerate: inUnit('Hz'),
  stable: yesOrNo,
  margin: inUnit('', 3),
  ringing_ms: inUnit('ms', 3),
  half_power_hz: inUnit('Hz'),
  stopband_highest_db: inUnit('dB', 4),
  gain: inUnit('', 4),
  noise_db: inUnit('dB', 3),
  float_safe: yesOrNo,
};

export interface Row {
  readonly name: string;
  readonly a: string;
  readonly b: string;
}

export function measuredRows(a: Measured, b: Measured): Row[] {
  return Object.entries(measures)
    .filter(([name]) => a[name] !== undefined || b[name] !== undefined)
    .map(([name, text]) => ({
      name: words.measures[name] ?? name,
      a: text(a[name]),
      b: text(b[name]),
    }));
}
