// Copies texts, also where a browser keeps its clipboard from pages that come from a disk.

import type { App } from './app.ts';
import { element } from './dom.ts';
import { strings } from './strings.ts';

function copiedBySelection(text: string): boolean {
  const area = element('textarea', { class: 'unseen', readonly: '' });
  area.value = text;
  const focused = document.activeElement;
  document.body.append(area);
  area.select();
  // The only way where there is no Clipboard interface.
  const copied = document.execCommand('copy');
  area.remove();
  if (focused instanceof HTMLElement) focused.focus();
  return copied;
}

async function copied(text: string): Promise<boolean> {
  try {
    await navigator.clipboard.writeText(text);
    return true;
  } catch {
    return copiedBySelection(text);
  }
}

/** A button that copies a text, which is made when it is pressed. */
export function copyButton(
  app: App,
  label: string,
  what: string,
  text: () => string,
): HTMLButtonElement {
  const button = element('button', { type: 'button', title: strings.copy.title(what) }, label);
  button.setAttribute('aria-label', `${label}: ${what}`);
  let timer: ReturnType<typeof setTimeout> | undefined;
  button.addEventListener('click', () => {
    void copied(text()).then((done) => {
      app.announce(done ? strings.copy.done(what) : strings.copy.failed);
      button.textContent = done ? strings.copy.copied : strings.copy.failedShort;
      clearTimeout(timer);
      timer = setTimeout(() => (button.textContent = label), 1500);
    });
  });
  return button;
}
