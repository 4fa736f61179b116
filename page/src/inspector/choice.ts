// One of a few words: a group of radio buttons, or a list where there are many.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { Attribute } from '../session/protocol.ts';
import { labelOf, labelText, resetButton, type Control } from './control.ts';
import { setAtOnce } from './setting.ts';

/** More choices than this make a list. */
const few = 5;

function radioGroup(app: App, attribute: Attribute, choices: readonly string[]): Control {
  const inputs = choices.map((choice) => {
    const input = element('input', { type: 'radio', name: attribute.name, value: choice });
    input.addEventListener('change', () => setAtOnce(app, attribute.name, [choice]));
    return input;
  });
  const group = element('fieldset', {
    class: 'control choice',
    role: 'radiogroup',
    'aria-label': labelOf(attribute),
  });
  group.append(
    element('div', { class: 'heading' }, labelText(attribute), resetButton(app, attribute)),
    element(
      'div',
      { class: 'choices' },
      ...inputs.map((input) => element('label', {}, input, element('span', {}, input.value))),
    ),
  );
  return {
    element: group,
    show([value]) {
      for (const input of inputs) input.checked = input.value === value;
    },
    disable(isDisabled) {
      group.disabled = isDisabled;
    },
  };
}

function list(app: App, attribute: Attribute, choices: readonly string[]): Control {
  const select = element('select', { 'aria-label': labelOf(attribute) });
  select.append(...choices.map((choice) => element('option', { value: choice }, choice)));
  select.addEventListener('change', () => setAtOnce(app, attribute.name, [select.value]));
  return {
    element: element(
      'div',
      { class: 'control' },
      element('div', { class: 'heading' }, labelText(attribute), resetButton(app, attribute)),
      select,
    ),
    show([value]) {
      select.value = String(value);
    },
    disable(isDisabled) {
      select.disabled = isDisabled;
    },
  };
}

export function choiceControl(app: App, attribute: Attribute): Control {
  const choices = (attribute.properties.enumvals ?? []).map(String);
  return (choices.length > few ? list : radioGroup)(app, attribute, choices);
}
