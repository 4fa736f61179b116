// A part of the page that folds, and stays as it was left.

import { element } from '../dom.ts';
import { keep, kept } from '../state/kept.ts';

/** @param isOpen  before anybody folded or opened it */
export function fold(title: string, isOpen: boolean, ...content: Node[]): HTMLDetailsElement {
  const name = `fold.${title}`;
  const made = element('details', { class: 'fold' }, element('summary', {}, title), ...content);
  made.open = (kept(name) ?? (isOpen ? 'open' : 'folded')) === 'open';
  // The event comes later, and of what is opened here, too.
  let wasOpen = made.open;
  made.addEventListener('toggle', () => {
    if (made.open === wasOpen) return;
    wasOpen = made.open;
    keep(name, made.open ? 'open' : 'folded');
  });
  return made;
}
