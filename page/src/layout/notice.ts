// What the user should know of an address or a file, above everything else until it is dismissed.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { strings } from '../strings.ts';

export function notice(app: App): HTMLElement {
  const text = element('p', { role: 'status' });
  const dismiss = element('button', { type: 'button' }, strings.layout.dismiss);
  dismiss.addEventListener('click', () => app.notice.set(''));
  const made = element('aside', { class: 'notice' }, text, dismiss);
  app.notice.follow((sentence) => {
    text.textContent = sentence;
    dismiss.hidden = sentence === '';
    made.classList.toggle('unseen', sentence === '');
  });
  return made;
}
