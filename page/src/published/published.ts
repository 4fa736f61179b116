// The dictionary as the host shows it, key by key.

import type { App } from '../app.ts';
import { copyButton } from '../clipboard.ts';
import { element } from '../dom.ts';
import { seen } from '../seen.ts';
import type { DictionaryEntry } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { columns, jsonValue, shownValue, type Published } from './numbers.ts';

const words = strings.published;

/** Lists with more rows than this fold. */
const few = 12;

/** What the numbers of a list mean, by its key; one number a row elsewhere. */
const headings: Readonly<Record<string, readonly string[]>> = {
  zeroes: words.root,
  poles: words.root,
  cascade: words.section,
};

// What comes into sight is shown a moment later, and what is copied is always the latest.
function dictionaryOf(app: App): readonly DictionaryEntry[] {
  return app.shown.value?.design.dictionary ?? [];
}

interface Entry {
  readonly element: HTMLElement;
  show(value: Published | readonly Published[]): void;
}

function entry(app: App, key: string): Entry {
  const count = element('span', { class: 'quiet' });
  const heading = element('span', { class: 'quiet' });
  const text = element('span');
  const list = element('pre', { tabindex: '0', 'aria-label': key }, heading, text);
  const more = element('button', { type: 'button' });
  let isOpen = false;
  let value: Published | readonly Published[] = '';
  const copy = copyButton(app, words.copy, `"${key}"`, () => {
    const latest = dictionaryOf(app).find(([name]) => name === key);
    return latest ? jsonValue(latest[1]) : '';
  });
  const show = () => {
    const isList = Array.isArray(value);
    const names = headings[key] ?? [];
    const rows = isList ? columns(value as Published[], names) : [shownValue(value as Published)];
    heading.textContent = isList && names.length > 0 ? `${rows.shift()}\n` : '';
    count.textContent = isList ? words.count((value as Published[]).length) : '';
    text.textContent = (isOpen ? rows : rows.slice(0, few)).join('\n');
    more.hidden = rows.length <= few;
    more.textContent = isOpen ? words.less : words.more(rows.length);
    more.setAttribute('aria-expanded', String(isOpen));
  };
  more.addEventListener('click', () => {
    isOpen = !isOpen;
    show();
  });
  return {
    element: element(
      'li',
      { class: 'entry' },
      element('div', { class: 'heading' }, element('code', {}, key), count, copy),
      list,
      more,
    ),
    show(next) {
      value = next;
      show();
    },
  };
}

export function published(app: App): HTMLElement {
  const list = element('ul', { class: 'dictionary' });
  let dictionary: readonly DictionaryEntry[] = [];
  const asJson = () =>
    `{\n${dictionaryOf(app)
      .map(([key, value]) => `  ${JSON.stringify(key)}: ${jsonValue(value)}`)
      .join(',\n')}\n}\n`;
  const made = element(
    'div',
    { class: 'stack' },
    element('div', { class: 'row' }, copyButton(app, words.copyAll, words.all, asJson)),
    list,
  );
  const entries = new Map<string, Entry>();
  const isSeen = seen(made);
  const show = () => {
    const { shown } = app;
    if (!isSeen.value || !shown.value || shown.value.design.dictionary === dictionary) return;
    dictionary = shown.value.design.dictionary;
    for (const [key, value] of dictionary) {
      const its = entries.get(key) ?? entry(app, key);
      entries.set(key, its);
      its.show(value);
    }
    const wanted = dictionary.map(([key]) => entries.get(key)!.element);
    // Elements that stay where they are keep the focus.
    if (
      wanted.some((item, index) => list.children[index] !== item) ||
      wanted.length !== list.children.length
    )
      list.replaceChildren(...wanted);
  };
  isSeen.follow(show);
  app.shown.follow(show);
  return made;
}
