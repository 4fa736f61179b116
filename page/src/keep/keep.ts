// Opening and saving designs, and the command that makes the same filter at a terminal.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { fold } from '../layout/fold.ts';
import { strings } from '../strings.ts';
import { commandLine } from './command_line.ts';
import { openButton } from './open.ts';
import { fileStem, saveFile } from './save.ts';

const words = strings.keep;

async function save(app: App): Promise<void> {
  const { settings } = app.store.state.value;
  const rate = app.audioRate.value;
  try {
    const { text } = await app.patient.ask('document', {
      settings,
      ...(rate !== undefined && { audio_rate: rate }),
    });
    const stem = fileStem(app.shown.value?.design.settings ?? settings);
    saveFile(`${stem}.json`, text, 'application/json');
  } catch (reason) {
    app.notice.set(words.notSaved((reason as Error).message));
  }
}

export function keep(app: App): HTMLElement {
  const saving = element('button', { type: 'button', title: words.saveTitle }, words.save);
  saving.addEventListener('click', () => void save(app));
  const command = commandLine(app);
  app.shown.follow((shown) => {
    if (shown) command.show(shown.design.command);
  });
  return fold(
    words.title,
    !matchMedia('(max-width: 48rem)').matches,
    element(
      'div',
      { class: 'keep stack' },
      element('div', { class: 'row' }, openButton(app), saving),
      command.element,
    ),
  );
}
