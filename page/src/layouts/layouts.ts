// The filter in the layouts of other programs.

import type { App } from '../app.ts';
import { copyButton } from '../clipboard.ts';
import { element } from '../dom.ts';
import { commandLine } from '../keep/command_line.ts';
import { fileStem, saveFile } from '../keep/save.ts';
import { seen } from '../seen.ts';
import { Latest } from '../session/latest.ts';
import type { LayoutRequest } from '../session/protocol.ts';
import { keep, kept } from '../state/kept.ts';
import { strings } from '../strings.ts';
import { endingOf } from './ending.ts';

const words = strings.layouts;

type Option = 'normalise' | 'as_published' | 'anyway';
const options: readonly Option[] = ['normalise', 'as_published', 'anyway'];

function targetList(app: App): HTMLSelectElement {
  const list = element('select', { id: 'layout-target', 'aria-describedby': 'layout-summary' });
  for (const { name } of app.description.targets)
    list.append(element('option', { value: name }, name));
  const wanted = kept('target');
  if (app.description.targets.some(({ name }) => name === wanted)) list.value = wanted!;
  return list;
}

export function layouts(app: App): HTMLElement {
  const target = targetList(app);
  const summary = element('p', { class: 'quiet', id: 'layout-summary' });
  const switches = options.map((option) => {
    const input = element('input', { type: 'checkbox', name: option });
    const label = element('label', { class: 'switch' }, input, words.options[option]);
    return { option, input, label };
  });
  const text = element('pre', {
    class: 'layout-file',
    role: 'region',
    tabindex: '0',
    'aria-label': words.file,
  });
  const remarks = element('ul', { class: 'layout-remarks' });
  const command = commandLine(app);
  const copy = copyButton(app, words.copy, words.file, () => text.textContent ?? '');
  const save = element('button', { type: 'button' }, words.save);
  save.addEventListener('click', () => {
    const stem = fileStem(app.shown.value?.design.settings ?? {});
    saveFile(stem + endingOf(target.value), text.textContent ?? '');
  });

  const show = (file: string, sentences: readonly string[], isRefused: boolean) => {
    text.textContent = file;
    text.hidden = command.element.hidden = copy.disabled = save.disabled = isRefused;
    remarks.classList.toggle('problem', isRefused);
    remarks.replaceChildren(...sentences.map((sentence) => element('li', {}, sentence)));
  };
  const latest = new Latest(
    app.patient,
    'layout',
    (layout) => {
      command.show(layout.command);
      show(layout.text, layout.remarks, false);
    },
    (reason) => show('', [`${reason.message}.`], true),
  );
  const made = element(
    'div',
    { class: 'stack' },
    element(
      'div',
      { class: 'row' },
      element('label', { for: 'layout-target' }, words.target),
      target,
      copy,
      save,
    ),
    summary,
    element('div', { class: 'row' }, ...switches.map(({ label }) => label)),
    element('div', { role: 'status' }, remarks),
    text,
    command.element,
  );
  const isSeen = seen(made);
  let asked = '';
  const ask = () => {
    if (!isSeen.value) return;
    const rate = app.audioRate.value;
    const chosen = switches.filter(({ input }) => input.checked);
    const request: LayoutRequest = {
      settings: app.store.state.value.settings,
      target: target.value,
      ...(rate !== undefined && { audio_rate: rate }),
      ...Object.fromEntries(chosen.map(({ option }) => [option, true])),
    };
    const next = JSON.stringify(request);
    if (next === asked) return;
    asked = next;
    latest.ask(request);
  };
  const change = () => {
    keep('target', target.value);
    const its = app.description.targets.find(({ name }) => name === target.value);
    summary.textContent = its?.summary ?? '';
    ask();
  };
  target.addEventListener('change', change);
  for (const { input } of switches) input.addEventListener('change', ask);
  isSeen.follow(ask);
  app.shown.follow(ask);
  change();
  return made;
}
