// The signals that can be chosen.

import type { strings } from '../strings.ts';
import { clicks, pinkNoise, sweep, whiteNoise } from './signals.ts';
import { flat, perOctave, spectrumOf, type Spectrum } from './spectrum.ts';

export type SignalName = Exclude<keyof typeof strings.listen.signals, 'file'>;

/** What is played, over and over. */
export interface Played {
  readonly buffer: AudioBuffer;
  readonly spectrum: Spectrum;
}

interface Maker {
  readonly samples: (rate: number) => Float32Array<ArrayBuffer>;
  readonly spectrum: Spectrum;
}

const makers: Readonly<Record<SignalName, Maker>> = {
  pink: { samples: pinkNoise, spectrum: perOctave },
  white: { samples: whiteNoise, spectrum: flat },
  sweep: { samples: sweep, spectrum: perOctave },
  clicks: { samples: clicks, spectrum: flat },
};

export function madeSignal(name: SignalName, rate: number): Played {
  const { samples, spectrum } = makers[name];
  const made = samples(rate);
  const buffer = new AudioBuffer({ length: made.length, sampleRate: rate });
  buffer.copyToChannel(made, 0);
  return { buffer, spectrum };
}

export function fileSignal(buffer: AudioBuffer): Played {
  return { buffer, spectrum: spectrumOf(buffer.getChannelData(0), buffer.sampleRate) };
}
