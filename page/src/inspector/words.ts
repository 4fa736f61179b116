// Any word, such as the name of the dictionary.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { shownText } from '../layout/keys.ts';
import type { Attribute } from '../session/protocol.ts';
import { labelOf, labelText, resetButton, type Control } from './control.ts';
import { setAtOnce } from './setting.ts';

export function wordControl(app: App, attribute: Attribute): Control {
  const { name } = attribute;
  const input = element('input', {
    type: 'text',
    name,
    maxlength: '200',
    'aria-label': labelOf(attribute),
    autocomplete: 'off',
    spellcheck: 'false',
  });
  input.addEventListener('change', () => {
    const word = input.value.trim();
    // A box without a word of its own gets one from its host.
    setAtOnce(app, name, word === '' ? (app.description.fresh[name] ?? []) : [word]);
  });
  return {
    element: element(
      'div',
      { class: 'control' },
      element('div', { class: 'heading' }, labelText(attribute), resetButton(app, attribute)),
      input,
    ),
    show([value]) {
      const isChosen = name in app.store.state.value.settings;
      input.value = isChosen ? String(value) : '';
      input.placeholder = String(value);
      input.dataset[shownText] = input.value;
    },
    disable(isDisabled) {
      input.disabled = isDisabled;
    },
  };
}
