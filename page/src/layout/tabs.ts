// Tabs, of which one is open. What is in a tab is made when it is opened first.

import { element } from '../dom.ts';
import { keep, kept } from '../state/kept.ts';
import { strings } from '../strings.ts';

export interface Tab {
  /** Of the elements, and under which the choice is kept. */
  readonly name: string;
  readonly title: string;
  readonly make: () => HTMLElement;
}

export function tabs(list: readonly Tab[]): HTMLElement {
  const buttons = element('div', { role: 'tablist', 'aria-label': strings.layout.tools });
  const panels = element('div', { class: 'tab-panels' });
  const made = new Set<string>();
  const open = (chosen: Tab) => {
    list.forEach((tab, index) => {
      const is = tab === chosen;
      const button = buttons.children[index] as HTMLButtonElement;
      const panel = panels.children[index] as HTMLElement;
      button.setAttribute('aria-selected', String(is));
      button.tabIndex = is ? 0 : -1;
      panel.hidden = !is;
      if (!is || made.has(tab.name)) return;
      made.add(tab.name);
      panel.append(tab.make());
    });
    keep('tab', chosen.name);
  };
  for (const tab of list) {
    const button = element(
      'button',
      { type: 'button', role: 'tab', id: `tab-${tab.name}`, 'aria-controls': `panel-${tab.name}` },
      tab.title,
    );
    button.addEventListener('click', () => open(tab));
    buttons.append(button);
    panels.append(
      element('div', {
        role: 'tabpanel',
        id: `panel-${tab.name}`,
        'aria-labelledby': `tab-${tab.name}`,
        tabindex: '0',
      }),
    );
  }
  buttons.addEventListener('keydown', (event) => {
    const present = list.findIndex(
      (_, index) => buttons.children[index]!.getAttribute('aria-selected') === 'true',
    );
    const next = {
      ArrowRight: (present + 1) % list.length,
      ArrowLeft: (present + list.length - 1) % list.length,
      Home: 0,
      End: list.length - 1,
    }[event.key];
    if (next === undefined) return;
    event.preventDefault();
    open(list[next]!);
    (buttons.children[next] as HTMLElement).focus();
  });
  const first = list.find(({ name }) => name === kept('tab')) ?? list[0];
  if (first) open(first);
  return element('section', { class: 'tabs' }, buttons, panels);
}
