// One number, or as many as the box holds: for each a field and, where it has ends, a slider.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { Attribute, Value } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { labelOf, labelText, resetButton, type Control } from './control.ts';
import { field } from './field.ts';
import { shownNumber, typedNumbers } from './quantity.ts';
import { scaleOf, type Scale } from './scale.ts';
import { setAtOnce, setAttribute } from './setting.ts';
import { slider } from './slider.ts';

const words = strings.inspector;

/** Sample rates that are in use, to choose from. */
const usualRates = [0, 250, 8000, 16000, 44100, 48000, 88200, 96000, 176400, 192000];

function usualValues(attribute: Attribute, input: HTMLInputElement): HTMLElement[] {
  if (attribute.name !== 'samplerate') return [];
  const id = `usual-${attribute.name}`;
  input.setAttribute('list', id);
  const options = usualRates.map((rate) =>
    element(
      'option',
      { value: String(rate), label: rate === 0 ? words.followsAudio : `${rate} Hz` },
      String(rate),
    ),
  );
  return [element('datalist', { id }, ...options)];
}

export function numberControl(app: App, attribute: Attribute): Control {
  const { name, maximum } = attribute;
  const label = labelOf(attribute);
  let values: readonly number[] = [];
  let scale: Scale = scaleOf(attribute, app.settings(), NaN);
  const hint = element('p', { class: 'remark quiet' });
  const wrong = element('p', { class: 'remark problem', id: `wrong-${name}`, role: 'alert' });

  const isCrossing = (index: number, value: number) =>
    values.some((other, at) => (at < index && other >= value) || (at > index && other <= value));
  const withValue = (index: number, value: number) => values.with(index, value);

  const complain = (sentence: string) => {
    wrong.textContent = sentence;
    for (const { input } of fields) {
      input.toggleAttribute('aria-invalid', false);
      if (sentence !== '') input.setAttribute('aria-invalid', 'true');
    }
  };
  const take = (index: number, text: string) => {
    const typed = typedNumbers(text, scale.unit);
    if ('wrong' in typed) {
      complain(typed.wrong === 'doubtful' ? words.doubtful(text) : words.notNumber(text));
      return;
    }
    const { numbers } = typed;
    if (numbers.length > maximum) return complain(words.tooMany(label, maximum));
    if (scale.isWhole && !numbers.every(Number.isSafeInteger)) return complain(words.whole(label));
    complain('');
    setAtOnce(app, name, numbers.length > 1 ? numbers : withValue(index, numbers[0]!));
    // Other words for the same number change nothing that is followed.
    fields[index]!.show(values[index] ?? NaN, scale);
  };

  const rows = Array.from({ length: maximum }, (_, index) => {
    const own = maximum > 1 ? (words.edges[index] ?? String(index + 1)) : '';
    const change = (value: number) => {
      complain('');
      if (!isCrossing(index, value)) setAttribute(app, name, withValue(index, value));
    };
    const full = own === '' ? label : `${label}, ${own}`;
    const itsField = field(full, name, { typed: (text) => take(index, text), change });
    const itsSlider = slider(full, {
      change,
      settle: () => app.store.settle(),
      reset: () => setAtOnce(app, name, app.description.fresh[name] ?? []),
    });
    const caption = element('span', { class: 'caption quiet', 'aria-hidden': 'true' }, own);
    itsField.input.setAttribute('aria-describedby', `wrong-${name} remark-${name}`);
    return {
      field: itsField,
      slider: itsSlider,
      caption,
      element: element('div', { class: 'number' }, caption, itsField.element, itsSlider.element),
    };
  });
  const fields = rows.map((row) => row.field);
  return {
    element: element(
      'div',
      { class: 'control', role: 'group', 'aria-label': label },
      element('div', { class: 'heading' }, labelText(attribute), resetButton(app, attribute)),
      ...rows.map((row) => row.element),
      ...usualValues(attribute, fields[0]!.input),
      hint,
      wrong,
    ),
    show(shown: readonly Value[]) {
      complain('');
      values = shown.map(Number);
      const samplerate = app.shown.value?.design.samplerate ?? NaN;
      scale = scaleOf(attribute, app.settings(), samplerate);
      if (name === 'samplerate')
        hint.textContent = values[0] === 0 ? words.zeroFollows(samplerate) : '';
      rows.forEach((row, index) => {
        const value = values[index];
        row.element.hidden = value === undefined;
        if (value === undefined) return;
        row.caption.hidden = values.length < 2;
        row.field.show(value, scale);
        row.slider.show(value, scale, `${shownNumber(value)} ${scale.unit}`.trim());
      });
    },
    disable(isDisabled) {
      for (const row of rows) {
        row.field.input.disabled = isDisabled;
        row.slider.disable(isDisabled);
      }
    },
  };
}
