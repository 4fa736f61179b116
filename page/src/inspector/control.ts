// What all controls of attributes have in common.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { Attribute, Value } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { setAtOnce } from './setting.ts';

export interface Control {
  readonly element: HTMLElement;
  /** Shows values as the box holds them. */
  show(values: readonly Value[]): void;
  disable(isDisabled: boolean): void;
}

export function labelOf(attribute: Attribute): string {
  return String(attribute.properties.label?.[0] ?? attribute.name);
}

function letters(text: string): string {
  return text.toLowerCase().replaceAll(/[^a-z0-9]/g, '');
}

/**
 * The label as the class declares it; and the name, which links and the command use, where the
 * label does not say it.
 */
export function labelText(attribute: Attribute): HTMLElement {
  const label = labelOf(attribute);
  const text = element('span', { class: 'label' }, label);
  if (letters(label) !== letters(attribute.name))
    text.append(' ', element('code', { class: 'quiet' }, attribute.name));
  return text;
}

/** Sets an attribute as in a fresh box; in sight where it differs from that. */
export function resetButton(app: App, attribute: Attribute): HTMLButtonElement {
  const label = strings.inspector.reset(labelOf(attribute));
  const button = element(
    'button',
    { type: 'button', class: 'reset', title: label, 'aria-label': label },
    '↺',
  );
  button.addEventListener('click', () => {
    setAtOnce(app, attribute.name, app.description.fresh[attribute.name] ?? []);
  });
  app.store.state.follow(({ settings }) => {
    button.classList.toggle('idle', !(attribute.name in settings));
    button.disabled = !(attribute.name in settings);
  });
  return button;
}
