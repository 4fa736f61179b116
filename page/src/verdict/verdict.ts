// Whether the filter is what its settings ask for, in the words of `veltane check`.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { Requests, Verdict } from '../session/protocol.ts';
import { Latest } from '../session/latest.ts';
import { strings } from '../strings.ts';
import { facts, findings } from './findings.ts';
import { headline } from './headline.ts';
import { LowerOrder } from './lower_order.ts';

const words = strings.verdict;

/** In milliseconds: a verdict that takes longer is shown as one on the filter before. */
const patience = 200;

export function verdict(app: App): HTMLElement {
  const line = headline();
  const list = element('div', { class: 'findings' });
  const table = facts();
  const made = element(
    'section',
    { class: 'verdict', 'aria-labelledby': 'verdict-heading' },
    element(
      'div',
      { class: 'verdict-heading' },
      element('h2', { id: 'verdict-heading' }, words.heading),
      line.element,
    ),
    list,
    table.element,
  );

  let stale: ReturnType<typeof setTimeout> | undefined;
  const current = () => {
    clearTimeout(stale);
    stale = undefined;
    made.classList.remove('stale');
  };
  const lowerOrder = new LowerOrder(app);
  const show = (answer: Verdict, request: Requests['verdict']['takes']) => {
    if (JSON.stringify(request) === asked) current();
    line.show(answer);
    list.replaceChildren(...findings(app, answer, undefined));
    table.show(answer);
    lowerOrder.look(answer, request, (order) =>
      list.replaceChildren(...findings(app, answer, order)),
    );
  };
  const latest = new Latest(app.patient, 'verdict', show, (reason) => {
    current();
    line.refuse(reason.message);
    list.replaceChildren();
    table.show(undefined);
  });

  let asked = '';
  const ask = () => {
    // What is in a closed tab is asked for when the tab opens.
    if (!app.shown.value || !made.checkVisibility()) return;
    const request = {
      settings: app.store.state.value.settings,
      ...(app.audioRate.value !== undefined && { audio_rate: app.audioRate.value }),
    };
    const text = JSON.stringify(request);
    if (text === asked) return;
    asked = text;
    lowerOrder.stop();
    stale ??= setTimeout(() => made.classList.add('stale'), patience);
    latest.ask(request);
  };
  app.shown.follow(ask);
  app.refusal.follow((reason) => {
    if (reason === '') return;
    asked = '';
    ask();
  });
  new IntersectionObserver(ask).observe(made);
  return made;
}
