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

/** In milliseconds: one that takes longer waits for a pause, since a dial that turns needs the
 *  processor. While it turns and turns, a tenth of the time is the verdict's. */
const quick = 40;
const pause = 250;
const share = 10;

export function verdict(app: App): HTMLElement {
  const list = element('div', { class: 'findings' });
  const table = facts();
  const made = element(
    'section',
    { class: 'verdict', 'aria-labelledby': 'verdict-heading' },
    element(
      'div',
      { class: 'verdict-heading' },
      element('h2', { id: 'verdict-heading', tabindex: '-1' }, words.heading),
      headline(app),
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
    const now = performance.now();
    const took = now - sent;
    sent = now;
    nextAt = took < quick ? now : now + share * took;
    if (JSON.stringify(request) === asked) current();
    const { problems } = answer;
    app.headline.set(
      problems === 0
        ? { kind: 'sound', text: words.sound }
        : { kind: 'problem', text: words.problems(problems) },
    );
    list.replaceChildren(...findings(app, answer, undefined));
    table.show(answer);
    lowerOrder.look(answer, request, (order) =>
      list.replaceChildren(...findings(app, answer, order)),
    );
  };
  const latest = new Latest(app.judge, 'verdict', show, (reason) => {
    current();
    app.headline.set({ kind: 'problem', text: `${words.noFilter}: ${reason.message}` });
    list.replaceChildren();
    table.show(undefined);
  });

  let asked = '';
  let sent = 0;
  let nextAt = 0;
  let waiting: ReturnType<typeof setTimeout> | undefined;
  const send = (request: Requests['verdict']['takes']) => {
    if (!latest.busy) sent = performance.now();
    latest.ask(request);
  };
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
    clearTimeout(waiting);
    const wait = Math.min(pause, nextAt - performance.now());
    if (wait <= 0) send(request);
    else waiting = setTimeout(() => send(request), wait);
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
