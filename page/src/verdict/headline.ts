// The verdict in a word or two.

import type { App, Headline } from '../app.ts';
import { element } from '../dom.ts';
import { strings } from '../strings.ts';

const words = strings.verdict;

const icons = { pending: '', sound: '✓', problem: '✗' };

function follow(app: App, made: HTMLElement, mark: HTMLElement, text: HTMLElement): void {
  app.headline.follow(({ kind, text: sentence }: Headline) => {
    made.dataset.kind = kind;
    mark.textContent = icons[kind];
    // The same text set again would be read again.
    if (text.textContent !== sentence) text.textContent = sentence;
  });
}

/** With the verdict; read out when it changes. */
export function headline(app: App): HTMLElement {
  const mark = element('span', { 'aria-hidden': 'true' });
  const text = element('span', { role: 'status', 'aria-live': 'polite' });
  const made = element('p', { class: 'verdict-headline' }, mark, text);
  follow(app, made, mark, text);
  return made;
}

/** For where the verdict is out of sight; brings it there. */
export function headlineButton(app: App): HTMLElement {
  const mark = element('span', { 'aria-hidden': 'true' });
  const text = element('span', {});
  const made = element(
    'button',
    { type: 'button', class: 'verdict-headline', title: words.showTitle },
    mark,
    text,
  );
  follow(app, made, mark, text);
  made.addEventListener('click', () => {
    const heading = document.querySelector<HTMLElement>('#verdict-heading')!;
    heading.scrollIntoView({ block: 'center' });
    heading.focus({ preventScroll: true });
  });
  return made;
}
