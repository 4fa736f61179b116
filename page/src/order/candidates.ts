// The least order of each family, in a table with a button that takes the filter.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { fixed, significant } from '../pictures/quantities.ts';
import type { Candidate, Settings, Value } from '../session/protocol.ts';
import { strings } from '../strings.ts';

const words = strings.order;

/** The settings of a candidate as the store has them: numbers where the class declares numbers, and
 *  no sample rate where the box follows the one of the audio. */
export function settingsOf(app: App, candidate: Candidate): Settings {
  const types = new Map(app.description.attributes.map(({ name, type }) => [name, type]));
  const typed = (name: string, value: Value) =>
    types.get(name) === 'symbol' ? value : Number(value);
  const followsAudio = Number(app.settings()['samplerate']?.[0] ?? 0) === 0;
  const entries = Object.entries(candidate.settings)
    .filter(([name]) => !(name === 'samplerate' && followsAudio))
    .map(([name, values]) => [name, values.map((value) => typed(name, value))]);
  return { units: ['hertz'], ...(Object.fromEntries(entries) as Settings) };
}

function row(candidate: Candidate, take: () => void): HTMLTableRowElement {
  const { family, impossible } = candidate;
  const name = element('th', { scope: 'row' }, family);
  if (impossible)
    return element(
      'tr',
      { class: 'impossible' },
      name,
      element('td', { colspan: '4' }, impossible),
    );
  const button = element('button', { type: 'button' }, words.take);
  button.setAttribute('aria-label', words.takeFamily(family, candidate.order));
  button.addEventListener('click', take);
  const remark = [
    ...(candidate.recommended ? [words.recommended] : []),
    ...(candidate.noisy ? [words.noisy] : []),
  ].join(', ');
  if (remark) name.append(element('small', {}, remark));
  return element(
    'tr',
    candidate.recommended ? { class: 'recommended' } : {},
    name,
    element('td', { class: 'quantity' }, String(candidate.order)),
    element('td', { class: 'quantity' }, `${significant(candidate.ripple, 3)} dB`),
    element('td', { class: 'quantity' }, `${fixed(candidate.attenuation, 1)} dB`),
    element('td', {}, button),
  );
}

export interface CandidateTable {
  readonly element: HTMLElement;
  show(candidates: readonly Candidate[]): void;
  /** Says instead why there are none. */
  refuse(reason: string): void;
}

/** @param point  called with the candidate that is pointed at or has the keyboard */
export function candidateTable(
  app: App,
  point: (candidate: Candidate | undefined) => void,
): CandidateTable {
  const body = element('tbody');
  const reason = element('p', { class: 'reason', role: 'status' });
  const heads = words.columns.map((text) => element('th', { scope: 'col' }, text));
  const table = element('table', {}, element('thead', {}, element('tr', {}, ...heads)), body);
  const take = (candidate: Candidate) => {
    app.store.settle();
    app.store.merge(settingsOf(app, candidate));
    app.store.settle();
    app.announce(words.taken(candidate.family, candidate.order));
  };
  return {
    element: element('div', { class: 'candidates' }, table, reason),
    show(candidates) {
      reason.textContent = '';
      table.hidden = false;
      // A row that has the keyboard keeps it.
      const held = [...body.rows].findIndex((made) => made.contains(document.activeElement));
      const rows = candidates.map((candidate) => {
        const made = row(candidate, () => take(candidate));
        for (const event of ['pointerenter', 'focusin'])
          made.addEventListener(event, () => point(candidate.impossible ? undefined : candidate));
        for (const event of ['pointerleave', 'focusout'])
          made.addEventListener(event, () => point(undefined));
        return made;
      });
      body.replaceChildren(...rows);
      rows[held]?.querySelector('button')?.focus();
    },
    refuse(sentence) {
      table.hidden = true;
      reason.textContent = sentence;
    },
  };
}
