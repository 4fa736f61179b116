// The colours of the pictures. A canvas takes colours that are resolved, so that they are read from
// the page's custom properties, and again where the theme changes.

import { element } from '../dom.ts';
import { Signal } from '../state/signal.ts';

const names = ['ink', 'muted', 'grid', 'paper', 'a', 'b', 'limit', 'forbidden', 'cutoff'] as const;

export type Colours = Readonly<Record<(typeof names)[number], string>>;

/** The colours within an element that is in the page; followers are called where they change. */
export function themeOf(place: HTMLElement): Signal<Colours> {
  const probe = element('span', { hidden: '' });
  place.append(probe);
  const read = () => {
    const entries = names.map((name) => {
      probe.style.color = `var(--picture-${name})`;
      return [name, getComputedStyle(probe).color];
    });
    return Object.fromEntries(entries) as Colours;
  };
  const colours = new Signal(read());
  const refresh = () => {
    const now = read();
    if (names.some((name) => now[name] !== colours.value[name])) colours.set(now);
  };
  for (const query of ['(prefers-color-scheme: dark)', '(prefers-contrast: more)'])
    matchMedia(query).addEventListener('change', refresh);
  new MutationObserver(refresh).observe(document.documentElement, { attributes: true });
  return colours;
}
