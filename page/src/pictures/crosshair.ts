// One frequency that is read in all panels at once.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { PanelName, ResponsePanel } from '../session/protocol.ts';
import { Signal } from '../state/signal.ts';
import { strings } from '../strings.ts';
import { frequencyText, unitOf, valueText } from './quantities.ts';
import { valueOn } from './reading.ts';

/** In Hz; undefined while nothing is read. */
export type Crosshair = Signal<number | undefined>;

/** What is read, wherever the pointer is. */
export const readPanels = ['level', 'phase', 'delay'] as const satisfies readonly PanelName[];

const names = 'AB';

/** The values of all filters: "−3.01 dB", or "A −3.01 dB, B −6 dB". */
function valuesAt({ curves, y }: ResponsePanel, hertz: number): string {
  const values = curves.map((curve) => valueText(valueOn(curve, hertz), unitOf(y.label)));
  if (values.length === 1) return values[0] ?? '';
  return values.map((value, index) => `${names[index]} ${value}`).join('  ');
}

function sentence(app: App, hertz: number): string {
  const parts = readPanels.flatMap((name) => {
    const panel = app.shown.value?.panels[name];
    return panel ? [`${strings.pictures.panels[name]} ${valuesAt(panel, hertz)}`] : [];
  });
  return [frequencyText(hertz), ...parts].join(', ');
}

/** The line that says what is read. */
export function readout(app: App, crosshair: Crosshair): HTMLElement {
  const frequency = element('b');
  const hint = element('span', { class: 'hint' }, strings.pictures.hint);
  const fields = readPanels.map((name) => {
    const value = element('b');
    return { name, value, label: element('span', {}, `${strings.pictures.panels[name]} `, value) };
  });
  const made = element(
    'p',
    { class: 'picture-readout' },
    frequency,
    ...fields.map(({ label }) => label),
    hint,
  );
  const show = () => {
    const hertz = crosshair.value;
    made.classList.toggle('reads', hertz !== undefined);
    hint.hidden = hertz !== undefined;
    frequency.textContent = hertz === undefined ? '' : frequencyText(hertz, 5);
    for (const { name, value, label } of fields) {
      const panel = app.shown.value?.panels[name];
      label.hidden = hertz === undefined || !panel;
      if (hertz !== undefined && panel) value.textContent = valuesAt(panel, hertz);
    }
  };
  crosshair.follow(show);
  app.shown.follow(() => {
    if (crosshair.value !== undefined) show();
  });
  return made;
}

/** For who moves it with the keyboard. */
export function announceReading(app: App, crosshair: Crosshair): void {
  if (crosshair.value !== undefined) app.announce(sentence(app, crosshair.value));
}
