// What the page and the audio thread send each other.

import type { Choice, Report } from './mixer.ts';
import type { Filter } from './voice.ts';

export interface Start {
  readonly channels: number;
}

export type Order =
  | { readonly choose: Choice }
  | { readonly slot: 'a' | 'b'; readonly filter: Filter | undefined }
  | { readonly end: true };

/** Sent some times a second. */
export type { Report };

/** The name of the processor. */
export const processorName = 'veltane-listen';
