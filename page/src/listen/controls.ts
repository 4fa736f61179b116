// What one listens to, through what, and how loudly.

import { element } from '../dom.ts';
import { strings } from '../strings.ts';
import { meter, type Meter } from './meter.ts';
import type { Choice } from './mixer.ts';
import { choices } from './mixer.ts';
import type { SignalName } from './signal_choices.ts';

const words = strings.listen;

/** In dB. */
const volumeAtFirst = -30;
const lowestVolume = -60;

export interface Actions {
  toggle(): void;
  choose(choice: Choice): void;
  match(): void;
  volume(gain: number): void;
  signal(): void;
  file(file: File): void;
}

export interface Controls {
  readonly element: HTMLElement;
  readonly meter: Meter;
  choice(): Choice;
  matched(): boolean;
  /** A ratio of amplitudes. */
  volume(): number;
  signal(): SignalName | 'file';
  showPlaying(playing: boolean): void;
  offerB(there: boolean): void;
}

function radio(choice: Choice, choose: (choice: Choice) => void): HTMLInputElement {
  const made = element('input', { type: 'radio', name: 'listen-through', value: choice });
  made.checked = choice === 'a';
  made.addEventListener('change', () => choose(choice));
  return made;
}

function volumeControl(change: () => void): { label: HTMLElement; db: () => number } {
  const input = element('input', {
    type: 'range',
    min: String(lowestVolume),
    max: '0',
    step: '1',
    value: String(volumeAtFirst),
  });
  const output = element('output', {});
  const db = () => Number(input.value);
  const show = () => {
    output.value = words.decibels(db());
    input.setAttribute('aria-valuetext', words.decibels(db()));
  };
  show();
  input.addEventListener('input', () => {
    show();
    change();
  });
  return { label: element('label', {}, words.volume, ' ', input, ' ', output), db };
}

export function controls(actions: Actions): Controls {
  const start = element('button', { type: 'button', class: 'listen-start' }, words.start);
  start.title = words.startTitle;
  start.addEventListener('click', () => actions.toggle());

  const signal = element('select', {});
  for (const [name, text] of Object.entries(words.signals))
    signal.append(element('option', { value: name }, text));
  const file = element('input', { type: 'file', accept: 'audio/*', 'aria-label': words.file });
  file.hidden = true;
  file.addEventListener('change', () => {
    const [chosen] = file.files ?? [];
    if (chosen) actions.file(chosen);
  });
  signal.addEventListener('change', () => {
    file.hidden = signal.value !== 'file';
    actions.signal();
  });

  const radios = choices.map((choice) => radio(choice, (chosen) => actions.choose(chosen)));
  const match = element('input', { type: 'checkbox' });
  match.checked = true;
  match.addEventListener('change', () => actions.match());

  const through = element(
    'div',
    { class: 'listen-row', role: 'radiogroup', 'aria-label': words.through },
    words.through,
    ...radios.map((input, index) => element('label', {}, input, words.choices[choices[index]!])),
  );
  const gain = () => 10 ** (volume.db() / 20);
  const volume = volumeControl(() => actions.volume(gain()));
  const shownMeter = meter();
  shownMeter.show(undefined, 0);
  const chosen = () => choices[radios.findIndex((input) => input.checked)] ?? 'a';
  return {
    element: element(
      'div',
      { class: 'listen-controls' },
      element(
        'div',
        { class: 'listen-row' },
        start,
        element('label', {}, words.signal, ' ', signal),
        file,
      ),
      element(
        'div',
        { class: 'listen-row' },
        through,
        element('label', { title: words.matchTitle }, match, words.match),
      ),
      element('div', { class: 'listen-row' }, volume.label, shownMeter.element),
    ),
    meter: shownMeter,
    choice: chosen,
    matched: () => match.checked,
    volume: gain,
    signal: () => signal.value as SignalName | 'file',
    showPlaying(playing) {
      start.textContent = playing ? words.stop : words.start;
    },
    offerB(there) {
      const [, a, b] = radios as [HTMLInputElement, HTMLInputElement, HTMLInputElement];
      b.disabled = !there;
      b.parentElement!.title = there ? '' : words.noB;
      if (there || !b.checked) return;
      a.checked = true;
      actions.choose('a');
    },
  };
}
