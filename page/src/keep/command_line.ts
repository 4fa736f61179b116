// A command in sight, copied with one click.

import type { App } from '../app.ts';
import { copyButton } from '../clipboard.ts';
import { element } from '../dom.ts';
import { strings } from '../strings.ts';
import { shellLine } from './shell.ts';

export interface CommandLine {
  readonly element: HTMLElement;
  show(words: readonly string[]): void;
}

export function commandLine(app: App): CommandLine {
  const code = element('code', { class: 'command' });
  const words = strings.keep;
  const copy = copyButton(app, words.copy, words.command, () => code.textContent ?? '');
  return {
    element: element('div', { class: 'command-line' }, code, copy),
    show(command) {
      const line = shellLine(command);
      if (code.textContent !== line) code.textContent = line;
    },
  };
}
