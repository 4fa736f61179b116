// What concerns all panels: which are open, and the frequencies that they show.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { strings } from '../strings.ts';
import { panelNames, type Choices } from './choice.ts';
import { isZoomed, setScale, showAll } from './view.ts';

function button(text: string, act: () => void): HTMLButtonElement {
  const made = element('button', { type: 'button' }, text);
  made.addEventListener('click', act);
  return made;
}

function press(made: HTMLButtonElement, isPressed: boolean): void {
  made.setAttribute('aria-pressed', String(isPressed));
}

export function toolbar(app: App, choices: Choices): HTMLElement {
  const { store } = app;
  const panels = panelNames.map((name) => {
    const made = button(strings.pictures.panels[name], () =>
      choices.isOpen(name) ? choices.close(name) : choices.open(name),
    );
    choices.value.follow(() => press(made, choices.isOpen(name)));
    return { name, made };
  });
  const isLogarithmic = () => store.state.value.view.scale !== 'linear';
  const isWrapped = () => store.state.value.view.wrapped === true;
  const scale = button(strings.pictures.logarithmic, () =>
    setScale(app, isLogarithmic() ? 'linear' : 'logarithmic'),
  );
  const wrapped = button(strings.pictures.wrapped, () =>
    store.change({ view: { ...store.state.value.view, wrapped: !isWrapped() } }),
  );
  const all = button(strings.pictures.wholeRange, () => showAll(app));
  store.state.follow((state) => {
    press(scale, isLogarithmic());
    press(wrapped, isWrapped());
    all.disabled = !isZoomed(state.view);
    for (const { name, made } of panels)
      if (name === 'difference') made.hidden = state.other === undefined;
  });
  const chooser = element(
    'div',
    { class: 'chooser', role: 'group', 'aria-label': strings.pictures.choose },
    ...panels.map(({ made }) => made),
  );
  return element('div', { class: 'picture-tools' }, chooser, scale, wrapped, all);
}
