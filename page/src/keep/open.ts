// Opens designs that were saved: chosen, or dropped anywhere onto the page.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { strings } from '../strings.ts';

const words = strings.keep;

/** A design of the highest order with all its forms takes a fifth of this. In bytes. */
const largest = 1_000_000;

/** How much of a file's name is said again, in characters. */
const enough = 60;

function shownName(name: string): string {
  // Controls and marks of direction could make a name look like something else.
  const plain = name.replaceAll(/\p{C}/gu, '?');
  return plain.length > enough ? `${plain.slice(0, enough)}…` : plain;
}

function reasonFor(name: string, reason: unknown): string {
  return reason instanceof DOMException ? words.unreadable(name) : `${(reason as Error).message}.`;
}

/** Takes the settings of a saved design, or says in a sentence why not. */
export async function openFile(app: App, file: File): Promise<void> {
  const name = shownName(file.name);
  try {
    if (file.size > largest) return app.notice.set(words.tooLarge(name));
    const text = await file.text();
    if (!text.trimStart().startsWith('{')) return app.notice.set(words.notDesign(name));
    const { settings } = await app.patient.ask('open', { text, name });
    // A design is opened under a name of its own, and not under the one that it was saved with.
    const taken = Object.entries(settings).filter(([attribute]) => attribute !== 'name');
    app.store.settle();
    app.store.replace(Object.fromEntries(taken));
    app.store.settle();
    app.notice.set('');
    app.announce(words.opened(name));
  } catch (reason) {
    app.notice.set(reasonFor(name, reason));
  }
}

export function openButton(app: App): HTMLElement {
  const input = element('input', {
    type: 'file',
    accept: '.json,application/json',
    class: 'unseen',
    tabindex: '-1',
    'aria-hidden': 'true',
  });
  input.addEventListener('change', () => {
    const [file] = input.files ?? [];
    if (file) void openFile(app, file);
    input.value = '';
  });
  const button = element('button', { type: 'button', title: words.openTitle }, words.open);
  button.addEventListener('click', () => input.click());
  return element('span', {}, button, input);
}

function hasFiles(event: DragEvent): boolean {
  return !event.defaultPrevented && (event.dataTransfer?.types.includes('Files') ?? false);
}

/** A file that nothing else on the page takes is opened; it never takes the page's place. */
export function followDrops(app: App): void {
  const { classList } = document.body;
  addEventListener('dragover', (event) => {
    classList.toggle('dropping', hasFiles(event));
    if (hasFiles(event)) event.preventDefault();
  });
  addEventListener('dragleave', (event) => {
    if (!event.relatedTarget) classList.remove('dropping');
  });
  addEventListener('drop', (event) => {
    classList.remove('dropping');
    if (!hasFiles(event)) return;
    event.preventDefault();
    const [file] = event.dataTransfer?.files ?? [];
    if (file) void openFile(app, file);
  });
}
