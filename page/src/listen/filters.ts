// The filters that are heard: what was published last, and the pinned one.

import type { Design } from '../session/protocol.ts';
import { matchingGain } from './match.ts';
import type { Spectrum } from './spectrum.ts';
import type { Filter } from './voice.ts';

/** b0 b1 b2 a1 a2 of each section; undefined if no sections are published. */
export function publishedSections(design: Design): Float64Array | undefined {
  const [, values] = design.dictionary.find(([key]) => key === 'cascade') ?? [];
  if (!Array.isArray(values) || values.length === 0) return undefined;
  return Float64Array.from(values as readonly number[]);
}

/** @param spectrum  of the signal whose level is to be matched; undefined if it is not */
export function heardFilter(
  sections: Float64Array,
  spectrum: Spectrum | undefined,
  rate: number,
): Filter {
  return { sections, gain: spectrum ? matchingGain(sections, spectrum, rate) : 1 };
}
