// Which attribute a sentence of the session is about, so that it can stand beside it.

import type { Attribute } from '../session/protocol.ts';

/** What attributes are called in sentences, beside their names. */
const words: readonly (readonly [RegExp, name: string])[] = [
  [/\bradians\b|--units/, 'units'],
  [/\bcutoffs?\b|--frequency/, 'frequency'],
  [/\bsample rate\b|--samplerate/, 'samplerate'],
];

/** Undefined for a sentence about the filter as a whole. */
export function subjectOf(sentence: string, attributes: readonly Attribute[]): string | undefined {
  const named = attributes.find(
    ({ name }) => sentence.startsWith(`${name} `) || sentence.includes(`'${name}'`),
  );
  if (named) return named.name;
  const name = words.find(([pattern]) => pattern.test(sentence))?.[1];
  return attributes.some((attribute) => attribute.name === name) ? name : undefined;
}
