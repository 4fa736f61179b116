// Gives the user a file.

import { element } from '../dom.ts';
import type { Settings } from '../session/protocol.ts';

/** A name for a file with this filter, which any program takes as a word of its own. */
export function fileStem(settings: Settings): string {
  const words = [settings.response, settings.frequency].flatMap((values) => values ?? []);
  const stem = words.join('_').replaceAll(/[^A-Za-z0-9]+/g, '_');
  return stem === '' ? 'filter' : stem;
}

export function saveFile(name: string, text: string, type = 'text/plain'): void {
  const address = URL.createObjectURL(new Blob([text], { type }));
  element('a', { href: address, download: name }).click();
  // The browser has taken the address by the next turn of its loop, and its text may be freed.
  setTimeout(() => URL.revokeObjectURL(address), 1000);
}
