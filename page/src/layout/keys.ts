// Keys that work everywhere on the page.

import type { App } from '../app.ts';

/** Fields set this to what they show, so that it can be told whether something else is typed. */
export const shownText = 'shown';

/** A field with something typed in it has an undo of its own. */
function undoesItself(target: EventTarget | null): boolean {
  if (target instanceof HTMLTextAreaElement) return !target.readOnly;
  if (!(target instanceof HTMLInputElement)) return false;
  if (!['text', 'search', 'number', 'url'].includes(target.type)) return false;
  return target.value !== target.dataset[shownText];
}

export function followKeys(app: App): void {
  addEventListener('keydown', (event) => {
    if (!(event.ctrlKey || event.metaKey) || event.altKey || undoesItself(event.target)) return;
    const key = event.key.toLowerCase();
    if (key === 'z' && !event.shiftKey) app.store.undo();
    else if (key === 'y' || key === 'z') app.store.redo();
    else return;
    event.preventDefault();
  });
}
