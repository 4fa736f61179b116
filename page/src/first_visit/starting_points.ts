// Filters to start from, by a name that says what they are for.

import type { Settings } from '../session/protocol.ts';
import { strings } from '../strings.ts';

const words = strings.startingPoints;

export interface StartingPoint {
  readonly name: string;
  readonly about: string;
  readonly settings: Settings;
}

/** Wide enough for a mains frequency that wanders: half a hertz beside it, it loses 22 dB. */
function humNotch(mains: number): Settings {
  return {
    topology: ['butterworth'],
    response: ['bandstop'],
    order: [2],
    frequency: [mains - 2, mains + 2],
  };
}

export const startingPoints: readonly StartingPoint[] = [
  { ...words.hum50, settings: humNotch(50) },
  { ...words.hum60, settings: humNotch(60) },
  {
    ...words.speech,
    settings: {
      topology: ['butterworth'],
      response: ['bandpass'],
      order: [4],
      frequency: [300, 3400],
    },
  },
  {
    ...words.eeg,
    settings: {
      topology: ['butterworth'],
      response: ['bandpass'],
      samplerate: [250],
      order: [4],
      frequency: [0.5, 40],
    },
  },
  {
    ...words.subsonic,
    settings: { topology: ['butterworth'], response: ['highpass'], order: [4], frequency: [20] },
  },
  {
    ...words.antiAlias,
    settings: { samplerate: [96000], order: [18], frequency: [24000] },
  },
];
