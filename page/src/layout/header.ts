// The line at the top: what filter this is, and what is done with the page as a whole.

import type { App } from '../app.ts';
import { copyButton } from '../clipboard.ts';
import { element } from '../dom.ts';
import { linkTo } from '../state/link.ts';
import { strings } from '../strings.ts';
import { headlineButton } from '../verdict/headline.ts';
import { chosenTheme, themes } from '../theme.ts';

const words = strings.header;

function button(label: string, title: string, act: () => void): HTMLButtonElement {
  const made = element('button', { type: 'button', title }, label);
  made.addEventListener('click', act);
  return made;
}

function undoButtons(app: App): HTMLElement {
  const undo = button(words.undo, words.undoTitle, () => app.store.undo());
  const redo = button(words.redo, words.redoTitle, () => app.store.redo());
  app.store.state.follow(() => {
    undo.disabled = !app.store.canUndo;
    redo.disabled = !app.store.canRedo;
  });
  return element('span', { class: 'joined' }, undo, redo);
}

function themeButton(app: App): HTMLButtonElement {
  const made = button('', words.themeTitle, () => {
    const next = themes[(themes.indexOf(chosenTheme.value) + 1) % themes.length]!;
    chosenTheme.set(next);
    app.announce(words.theme(next));
  });
  chosenTheme.follow((theme) => (made.textContent = words.theme(theme)));
  return made;
}

function counts(app: App): HTMLElement {
  const made = element('span', { class: 'counts', title: words.countsTitle });
  app.counts.follow(({ changes, designs, microseconds }) => {
    made.textContent = strings.counts(changes, designs, microseconds);
  });
  return made;
}

export function header(app: App, ...tools: HTMLElement[]): HTMLElement {
  const title = element('span', { class: 'filter-title' });
  app.shown.follow((shown) => (title.textContent = shown?.design.title ?? ''));
  return element(
    'header',
    { class: 'top' },
    element('h1', {}, strings.title),
    title,
    headlineButton(app),
    element(
      'div',
      { class: 'top-tools', role: 'group', 'aria-label': words.tools },
      undoButtons(app),
      ...tools,
      copyButton(app, words.link, words.linkWhat, () => linkTo(app)),
      themeButton(app),
      counts(app),
    ),
  );
}
