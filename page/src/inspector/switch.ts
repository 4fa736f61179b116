// On or off.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { Attribute } from '../session/protocol.ts';
import { labelText, resetButton, type Control } from './control.ts';
import { setAtOnce } from './setting.ts';

export function switchControl(app: App, attribute: Attribute): Control {
  const input = element('input', { type: 'checkbox', name: attribute.name });
  input.addEventListener('change', () => {
    setAtOnce(app, attribute.name, [input.checked ? 1 : 0]);
  });
  return {
    element: element(
      'div',
      { class: 'control heading' },
      element('label', { class: 'switch' }, input, labelText(attribute)),
      resetButton(app, attribute),
    ),
    show([value]) {
      input.checked = Number(value) !== 0;
    },
    disable(isDisabled) {
      input.disabled = isDisabled;
    },
  };
}
