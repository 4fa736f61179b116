// Starting points: in sight on a first visit, and in a menu afterwards.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { keep, kept } from '../state/kept.ts';
import { strings } from '../strings.ts';
import { startingPoints, type StartingPoint } from './starting_points.ts';

const words = strings.startingPoints;

function take(app: App, { name, settings }: StartingPoint): void {
  app.store.settle();
  app.store.open({ ...app.store.state.value, settings, view: {} });
  app.store.settle();
  app.announce(words.taken(name));
}

function buttons(app: App, afterwards: () => void): HTMLElement[] {
  return startingPoints.map((point) => {
    const button = element(
      'button',
      { type: 'button' },
      element('span', { class: 'name' }, point.name),
      ' ',
      element('span', { class: 'quiet' }, point.about),
    );
    button.addEventListener('click', () => {
      take(app, point);
      afterwards();
    });
    return element('li', {}, button);
  });
}

/** Goes with the first change, or when it is dismissed. */
export function firstVisit(app: App): HTMLElement {
  const made = element('section', { class: 'first-visit', 'aria-label': words.title });
  if (kept('visited') !== undefined || location.hash !== '') {
    made.hidden = true;
    return made;
  }
  const end = () => {
    keep('visited', 'yes');
    made.remove();
  };
  const dismiss = element('button', { type: 'button' }, strings.layout.dismiss);
  dismiss.addEventListener('click', end);
  made.append(
    element('div', { class: 'heading' }, element('p', {}, words.welcome), dismiss),
    element('ul', { class: 'starting-points' }, ...buttons(app, end)),
  );
  const stop = app.store.changes.follow((changes) => {
    if (changes === 0) return;
    end();
    queueMicrotask(() => stop());
  });
  return made;
}

export function startingMenu(app: App): HTMLElement {
  const id = 'starting-menu';
  const list = element('ul', { class: 'starting-points' });
  const menu = element(
    'div',
    { id, class: 'starting-menu', popover: '', 'aria-label': words.title },
    list,
  );
  list.append(...buttons(app, () => menu.hidePopover()));
  const button = element('button', { type: 'button', popovertarget: id }, words.menu);
  return element('span', {}, button, menu);
}
