// A field for one number. What is typed counts when Enter is pressed or the field is left; arrow
// keys and the wheel step at once.

import { element } from '../dom.ts';
import { shownText } from '../layout/keys.ts';
import { shownNumber } from './quantity.ts';
import { stepped, strideOf, type Scale, type Stride } from './scale.ts';

export interface FieldEvents {
  /** What was typed. */
  readonly typed: (text: string) => void;
  /** A new value, while the gesture goes on. */
  readonly change: (value: number) => void;
}

export interface Field {
  readonly element: HTMLElement;
  readonly input: HTMLInputElement;
  show(value: number, scale: Scale): void;
}

export function field(label: string, name: string, { typed, change }: FieldEvents): Field {
  const input = element('input', {
    type: 'text',
    name,
    'aria-label': label,
    autocomplete: 'off',
    spellcheck: 'false',
    enterkeyhint: 'done',
  });
  const unit = element('span', { class: 'unit quiet', 'aria-hidden': 'true' });
  let value = NaN;
  let scale: Scale | undefined;

  const restore = () => {
    input.value = shownNumber(value);
    input.dataset[shownText] = input.value;
  };
  const take = () => {
    if (input.value === input.dataset[shownText]) return;
    input.dataset[shownText] = input.value;
    typed(input.value);
  };
  const step = (direction: 1 | -1, stride: Stride) => {
    take();
    if (scale) change(stepped(scale, value, direction, stride));
    input.select();
  };
  input.addEventListener('focus', () => input.select());
  input.addEventListener('blur', take);
  input.addEventListener('keydown', (event) => {
    if (event.ctrlKey || event.metaKey || event.isComposing) return;
    const act = {
      Enter: () => {
        take();
        input.select();
      },
      Escape: restore,
      ArrowUp: () => step(1, strideOf(event)),
      ArrowDown: () => step(-1, strideOf(event)),
      PageUp: () => step(1, 'coarse'),
      PageDown: () => step(-1, 'coarse'),
    }[event.key];
    if (!act) return;
    event.preventDefault();
    act();
  });
  input.addEventListener(
    'wheel',
    (event) => {
      // The page scrolls past fields that nobody is in. Shift turns a wheel sideways.
      const turned = event.deltaY || event.deltaX;
      if (document.activeElement !== input || turned === 0 || event.ctrlKey) return;
      event.preventDefault();
      step(turned < 0 ? 1 : -1, strideOf(event));
    },
    { passive: false },
  );
  return {
    element: element('span', { class: 'field' }, input, unit),
    input,
    show(shown, its) {
      const isTyping = input.value !== (input.dataset[shownText] ?? '');
      value = shown;
      scale = its;
      unit.textContent = its.unit;
      if (!isTyping) restore();
    },
  };
}
