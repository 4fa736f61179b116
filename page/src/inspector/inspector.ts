// The attributes of the box, with the labels, categories and choices that the class declares. A new
// attribute appears by itself.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { fold } from '../layout/fold.ts';
import type { Attribute } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { choiceControl } from './choice.ts';
import type { Control } from './control.ts';
import { numberControl } from './numbers.ts';
import { subjectOf } from './remarks.ts';
import { switchControl } from './switch.ts';
import { wordControl } from './words.ts';

interface Row {
  readonly attribute: Attribute;
  readonly control: Control;
  readonly remark: HTMLElement;
}

function controlOf(app: App, attribute: Attribute): Control {
  if (attribute.properties.enumvals) return choiceControl(app, attribute);
  if (attribute.properties.style?.[0] === 'onoff') return switchControl(app, attribute);
  return (attribute.type === 'symbol' ? wordControl : numberControl)(app, attribute);
}

function categories(attributes: readonly Attribute[]): Map<string, Attribute[]> {
  const groups = new Map<string, Attribute[]>();
  for (const attribute of attributes) {
    const category = String(attribute.properties.category?.[0] ?? strings.inspector.noCategory);
    groups.set(category, [...(groups.get(category) ?? []), attribute]);
  }
  return groups;
}

/** What describes the published dictionary is seldom changed, and comes last. */
function isAboutPublishing(group: readonly Attribute[]): boolean {
  return group.some(({ name }) => name === 'name');
}

function isBasic(group: readonly Attribute[]): boolean {
  return group.some(({ properties }) => properties.basic !== undefined);
}

function rank(group: readonly Attribute[]): number {
  if (isAboutPublishing(group)) return 2;
  return isBasic(group) ? 0 : 1;
}

/** Where there is little room, the pictures come right after what has dials. */
function isOpenAtFirst(group: readonly Attribute[]): boolean {
  if (isAboutPublishing(group)) return false;
  const isNarrow = matchMedia('(max-width: 48rem)').matches;
  return !isNarrow || group.some(({ lowest }) => lowest !== undefined);
}

function follow(app: App, rows: readonly Row[], about: HTMLElement): void {
  let shownSettings: Record<string, string> = {};
  const show = (row: Row, values: readonly (string | number)[]) => row.control.show(values);

  const showRemarks = () => {
    const sentences = app.refusal.value
      ? [strings.inspector.refused(app.refusal.value)]
      : (app.shown.value?.design.remarks ?? []);
    const subjects = sentences.map((sentence) => subjectOf(sentence, app.description.attributes));
    const ofSubject = (name: string | undefined) =>
      sentences.filter((_, index) => subjects[index] === name).join('; ');
    for (const { attribute, remark } of rows) {
      const text = ofSubject(attribute.name);
      if (remark.textContent !== text) remark.textContent = text;
    }
    about.textContent = ofSubject(undefined);
  };

  // What was just set is seen at once, and what the box makes of it when it has answered.
  app.store.state.follow(({ settings }) => {
    const all = app.settings();
    for (const row of rows) {
      const { name } = row.attribute;
      const text = JSON.stringify(settings[name]);
      if (shownSettings[name] === text) continue;
      shownSettings = { ...shownSettings, [name]: text };
      show(row, all[name] ?? []);
    }
  });
  app.shown.follow((shown) => {
    if (!shown) return;
    // An answer to settings that have changed since would turn the dials back.
    if (JSON.stringify(shown.asked) !== JSON.stringify(app.store.state.value.settings)) return;
    const { settings, out_of_use } = shown.design;
    for (const row of rows) {
      show(row, settings[row.attribute.name] ?? []);
      row.control.disable(out_of_use.includes(row.attribute.name));
    }
    showRemarks();
  });
  app.refusal.follow(showRemarks);
}

export function inspector(app: App): HTMLElement {
  const rows: Row[] = [];
  const about = element('p', { class: 'remark problem', role: 'status' });
  const made = element('div', { class: 'inspector' }, about);
  const groups = [...categories(app.description.attributes)];
  groups.sort(([, a], [, b]) => rank(a) - rank(b));
  for (const [category, attributes] of groups) {
    const group = fold(category, isOpenAtFirst(attributes));
    for (const attribute of attributes) {
      const control = controlOf(app, attribute);
      const remark = element('p', { class: 'remark', id: `remark-${attribute.name}` });
      rows.push({ attribute, control, remark });
      control.element.append(remark);
      group.append(control.element);
    }
    made.append(group);
  }
  follow(app, rows, about);
  return made;
}
