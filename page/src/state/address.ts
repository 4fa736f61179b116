// A filter in the page's address: "#order=8&frequency=300,3400&vs.order=4&view.low=20". Behind "vs."
// stand the settings of the pinned filter, behind "view." what is shown.

import type { Attribute, Settings, Value, View } from '../session/protocol.ts';
import type { State } from './store.ts';

/** Longer addresses were not written here; all attributes take some 400 characters. */
const longest = 4000;

export interface Address {
  readonly state: State;
  /** What was not understood and is left as in a fresh box, as it was written. */
  readonly wrong: readonly string[];
  readonly isTooLong: boolean;
}

const pinned = 'vs';
const prefixes = { settings: '', other: `${pinned}.`, view: 'view.' } as const;

function valueIn(attribute: Attribute, text: string): Value | undefined {
  if (attribute.type === 'symbol') {
    const choices = attribute.properties.enumvals;
    return text !== '' && (!choices || choices.includes(text)) ? text : undefined;
  }
  const number = text.trim() === '' ? NaN : Number(text);
  const fits = attribute.type === 'long' ? Number.isSafeInteger(number) : Number.isFinite(number);
  return fits ? number : undefined;
}

function valuesIn(attribute: Attribute, text: string): Value[] | undefined {
  const words = attribute.maximum > 1 ? text.split(',') : [text];
  if (words.length > attribute.maximum) return undefined;
  const values = words.map((word) => valueIn(attribute, word));
  return values.every((value) => value !== undefined) ? values : undefined;
}

function viewIn(name: string, text: string): View | undefined {
  if (name === 'low' || name === 'high') {
    const frequency = text.trim() === '' ? NaN : Number(text);
    return frequency >= 0 && frequency < Infinity ? { [name]: frequency } : undefined;
  }
  if (name === 'scale' && (text === 'linear' || text === 'logarithmic')) return { scale: text };
  if (name === 'wrapped' && (text === '0' || text === '1')) return { wrapped: text === '1' };
  return undefined;
}

/** Reads what stands behind "#"; nothing that it holds makes it fail. */
export function readAddress(hash: string, attributes: readonly Attribute[]): Address {
  if (hash.length > longest)
    return { state: { settings: {}, view: {} }, wrong: [], isTooLong: true };
  const byName = new Map(attributes.map((attribute) => [attribute.name, attribute]));
  const settings: Record<string, readonly Value[]> = {};
  const other: Record<string, readonly Value[]> = {};
  let view: View = {};
  let isPinned = false;
  const wrong: string[] = [];
  const take = (into: Record<string, readonly Value[]>, name: string, text: string) => {
    const attribute = byName.get(name);
    const values = attribute && valuesIn(attribute, text);
    if (values) into[name] = values;
    return values !== undefined;
  };
  for (const [key, text] of new URLSearchParams(hash.replace(/^#/, ''))) {
    let isTaken = false;
    if (key === pinned) {
      isPinned = isTaken = text === '';
    } else if (key.startsWith(prefixes.other)) {
      isTaken = take(other, key.slice(prefixes.other.length), text);
      isPinned ||= isTaken;
    } else if (key.startsWith(prefixes.view)) {
      const part = viewIn(key.slice(prefixes.view.length), text);
      view = { ...view, ...part };
      isTaken = part !== undefined;
    } else {
      isTaken = take(settings, key, text);
    }
    if (!isTaken) wrong.push(text === '' ? key : `${key}=${text}`);
  }
  return { state: { settings, ...(isPinned && { other }), view }, wrong, isTooLong: false };
}

// Commas and colons may stand in a fragment, and read better as they are.
function word(text: string): string {
  return encodeURIComponent(text).replaceAll('%2C', ',').replaceAll('%3A', ':');
}

function pairs(prefix: string, settings: Settings): string[] {
  return Object.entries(settings).map(
    ([name, values]) => `${prefix}${word(name)}=${word(values.join(','))}`,
  );
}

// A fresh box that is pinned has no settings to name it by.
function pinnedPairs(other: Settings | undefined): string[] {
  if (!other) return [];
  const list = pairs(prefixes.other, other);
  return list.length > 0 ? list : [pinned];
}

/** @returns what stands behind "#"; empty for a fresh box. */
export function writeAddress({ settings, other, view }: State): string {
  const shown = Object.entries(view).map(
    ([name, value]) =>
      `${prefixes.view}${name}=${typeof value === 'boolean' ? +value : word(String(value))}`,
  );
  return [...pairs(prefixes.settings, settings), ...pinnedPairs(other), ...shown].join('&');
}
