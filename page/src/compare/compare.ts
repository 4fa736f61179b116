// Two filters: the one that is set, A, and the one that was pinned, B.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { labelOf } from '../inspector/control.ts';
import { seen } from '../seen.ts';
import { Latest } from '../session/latest.ts';
import type { Design, Settings, Verdict } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { measuredRows, type Row } from './measures.ts';

const words = strings.compare;

function button(label: string, act: () => void): HTMLButtonElement {
  const made = element('button', { type: 'button' }, label);
  made.addEventListener('click', act);
  return made;
}

function step(app: App, act: () => void): void {
  app.store.settle();
  act();
  app.store.settle();
}

export function pin(app: App): void {
  const { state } = app.store;
  step(app, () => app.store.change({ other: state.value.settings }));
}

export function unpin(app: App): void {
  const { settings, view } = app.store.state.value;
  step(app, () => app.store.open({ settings, view }));
}

export function swap(app: App): void {
  const { settings, other } = app.store.state.value;
  if (other) step(app, () => app.store.change({ settings: other, other: settings }));
}

function settingRows(app: App, a: Design, b: Design): Row[] {
  const rows = app.description.attributes.map((attribute) => ({
    name: labelOf(attribute),
    a: (a.settings[attribute.name] ?? []).join(', '),
    b: (b.settings[attribute.name] ?? []).join(', '),
    isOfHost: attribute.name === 'name',
  }));
  // Boxes without a name of their own get one each from their host.
  return rows.filter((row) => !row.isOfHost && row.a !== row.b);
}

function table(caption: string, rows: readonly Row[]): HTMLElement {
  const head = ['', 'A', 'B'].map((text) =>
    text === '' ? element('td') : element('th', { scope: 'col' }, text),
  );
  return element(
    'table',
    { class: 'comparison' },
    element('caption', {}, caption),
    element('thead', {}, element('tr', {}, ...head)),
    element(
      'tbody',
      {},
      ...rows.map(({ name, a, b }) =>
        element(
          'tr',
          a === b ? {} : { class: 'differs' },
          element('th', { scope: 'row' }, name),
          element('td', {}, a),
          element('td', {}, b),
        ),
      ),
    ),
  );
}

/** Asks for the verdict of one of the filters, and not again for the same. */
function measuring(app: App, taken: () => void) {
  let verdict: Verdict | undefined;
  let asked = '';
  const latest = new Latest(
    app.patient,
    'verdict',
    (answer) => {
      verdict = answer;
      taken();
    },
    () => {
      verdict = undefined;
      taken();
    },
  );
  return {
    get verdict() {
      return verdict;
    },
    ask(settings: Settings) {
      const rate = app.audioRate.value;
      const request = { settings, ...(rate !== undefined && { audio_rate: rate }) };
      const text = JSON.stringify(request);
      if (text === asked) return;
      asked = text;
      latest.ask(request);
    },
  };
}

export function compare(app: App): HTMLElement {
  const pinning = button(words.pin, () => pin(app));
  const swapping = button(words.swap, () => swap(app));
  const unpinning = button(words.unpin, () => unpin(app));
  const titles = element('div');
  const settings = element('div');
  const measures = element('div');
  const made = element(
    'div',
    { class: 'stack' },
    element('div', { class: 'row' }, pinning, swapping, unpinning),
    titles,
    settings,
    measures,
  );
  const showMeasures = () => {
    const [first, second] = [a.verdict, b.verdict];
    measures.replaceChildren(
      ...(first && second
        ? [table(words.numbers, measuredRows(first.measured, second.measured))]
        : []),
    );
  };
  const a = measuring(app, showMeasures);
  const b = measuring(app, showMeasures);
  const isSeen = seen(made);

  const showDesigns = (design: Design, other: Design) => {
    titles.replaceChildren(
      element(
        'dl',
        { class: 'compared' },
        element('dt', {}, 'A'),
        element('dd', {}, design.title),
        element('dt', {}, 'B'),
        element('dd', {}, other.title),
      ),
    );
    const rows = settingRows(app, design, other);
    settings.replaceChildren(
      rows.length > 0 ? table(words.settings, rows) : element('p', { class: 'quiet' }, words.same),
    );
  };
  const show = () => {
    if (!isSeen.value) return;
    const { other } = app.store.state.value;
    const shown = app.shown.value;
    swapping.disabled = unpinning.disabled = !other;
    pinning.textContent = other ? words.pinAgain : words.pin;
    if (!other || !shown?.other) {
      titles.replaceChildren(element('p', { class: 'quiet' }, words.howTo));
      settings.replaceChildren();
      measures.replaceChildren();
      return;
    }
    showDesigns(shown.design, shown.other);
    a.ask(shown.asked);
    b.ask(other);
    showMeasures();
  };
  isSeen.follow(show);
  app.shown.follow(show);
  app.store.state.follow(show);
  return made;
}
