// What the numbers of an attribute run over, and how far a step goes.

import type { Attribute, Settings } from '../session/protocol.ts';
import type { Unit } from './quantity.ts';

export interface Scale {
  readonly unit: Unit;
  readonly isWhole: boolean;
  /** Undefined where an attribute has no ends, and so no slider. */
  readonly ends: { readonly low: number; readonly high: number } | undefined;
  readonly isLogarithmic: boolean;
}

export type Stride = 'fine' | 'normal' | 'coarse';

/** The box keeps cutoffs between these, where 1 is half the sample rate. */
const cutoffs = { low: 0.0001, high: 0.9999 };

/** Where a range goes over more than this ratio, its lower end matters as much as its upper. */
const wide = 100;

/** What an attribute declares, and what its name says where it declares nothing. */
export function scaleOf(attribute: Attribute, settings: Settings, samplerate: number): Scale {
  const { name, lowest, highest } = attribute;
  const isWhole = attribute.type === 'long';
  if (name === 'frequency') {
    const inHertz = settings.units?.[0] === 'hertz';
    const top = inHertz ? samplerate / 2 : 1;
    const ends = { low: cutoffs.low * top, high: cutoffs.high * top };
    return { unit: inHertz ? 'Hz' : '', isWhole, ends, isLogarithmic: true };
  }
  if (lowest === undefined || highest === undefined)
    return {
      unit: name === 'samplerate' ? 'Hz' : '',
      isWhole,
      ends: undefined,
      isLogarithmic: true,
    };
  return {
    unit: /ripple|attenuation/.test(name) ? 'dB' : '',
    isWhole,
    ends: { low: lowest, high: highest },
    isLogarithmic: lowest > 0 && highest >= lowest * wide,
  };
}

/** The number at a place of the slider, from 0 to 1, with the digits that a place can tell. */
export function valueAt({ ends, isWhole, isLogarithmic }: Scale, place: number): number {
  if (!ends) throw new Error('there is no slider without ends');
  const { low, high } = ends;
  const exact = isLogarithmic ? low * (high / low) ** place : low + (high - low) * place;
  const digits = isLogarithmic ? Number(exact.toPrecision(3)) : Number(exact.toFixed(1));
  const rounded = isWhole ? Math.round(exact) : digits;
  return Math.min(Math.max(rounded, low), high);
}

export function placeOf({ ends, isLogarithmic }: Scale, value: number): number {
  if (!ends || Number.isNaN(value)) return 0;
  const { low, high } = ends;
  const inside = Math.min(Math.max(value, low), high);
  return isLogarithmic
    ? Math.log(inside / low) / Math.log(high / low)
    : (inside - low) / (high - low);
}

// One of the second digit: 100 at 3000. Below a power of ten the digits are those of what is below.
function decadeStep(value: number, direction: number): number {
  const size = Math.abs(value);
  if (size === 0) return 1;
  const isDown = Math.sign(direction) !== Math.sign(value);
  const digits = Math.floor(Math.log10(size * (1 + 1e-12)) + 0);
  const isPower = Math.abs(10 ** digits - size) <= size * 1e-12;
  return 10 ** (digits - 1 - (isDown && isPower ? 1 : 0));
}

const strides = { fine: 0.1, normal: 1, coarse: 10 };

/** The number that is a step further, up for a direction of 1 and down for one of -1. */
export function stepped(scale: Scale, value: number, direction: 1 | -1, stride: Stride): number {
  const usual = scale.isWhole && scale.ends ? 1 : 0;
  const step = usual || !scale.isLogarithmic ? 1 : decadeStep(value, direction);
  const far = step * strides[stride];
  const wanted = value + direction * (scale.isWhole ? Math.max(1, Math.round(far)) : far);
  const clean = Number(wanted.toPrecision(12));
  if (!scale.ends) return Math.max(clean, 0);
  return Math.min(Math.max(clean, scale.ends.low), scale.ends.high);
}

/** How far a key or a wheel goes: Shift is coarse, Alt is fine. */
export function strideOf({ shiftKey, altKey }: { shiftKey: boolean; altKey: boolean }): Stride {
  if (shiftKey) return 'coarse';
  return altKey ? 'fine' : 'normal';
}
