// A panel over frequency.

import { element } from '../dom.ts';
import type { Axis, LiveAnswer, PanelName, ResponsePanel } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { frequencyWords, limitsReached } from './alternative.ts';
import { Chart } from './chart.ts';
import { cutoffsOf } from './cutoff_settings.ts';
import { Cutoffs } from './cutoffs.ts';
import { follow } from './gestures.ts';
import { penOf, type Picture, type Room } from './picture.ts';
import { placeOf } from './range.ts';
import { layOver, Surface } from './surface.ts';
import {
  clipped,
  fillPolygon,
  strokeCurve,
  strokeHorizontal,
  strokeMark,
  strokeVertical,
  type Field,
} from './strokes.ts';

export type FrequencyPanelName = Extract<
  PanelName,
  'level' | 'passband' | 'phase' | 'delay' | 'difference' | 'sections'
>;

// The title says what the quantity is.
function inUnit({ label }: Axis): string {
  return label.slice(label.lastIndexOf(' in ') + 1);
}

export class FrequencyPanel implements Picture {
  readonly element = element('div', { class: 'plot' });
  readonly #name: FrequencyPanelName;
  readonly #room: Room;
  readonly #image = element('div', { role: 'img' });
  readonly #surface: Surface;
  readonly #chart: Chart;
  readonly #cutoffs: Cutoffs;
  #answer: LiveAnswer | undefined;

  constructor(name: FrequencyPanelName, room: Room) {
    this.#name = name;
    this.#room = room;
    this.#image.setAttribute('aria-label', strings.pictures.panels[name]);
    this.#surface = new Surface(strings.pictures.surface(strings.pictures.panels[name]));
    this.element.append(this.#image, this.#surface.element);
    this.#chart = new Chart(this.#image, () => room.colours.value);
    this.#cutoffs = new Cutoffs(room.app, this.#surface.element);
    follow({
      app: room.app,
      crosshair: room.crosshair,
      element: this.#surface.element,
      axis: () => this.#panel?.x,
    });
    room.crosshair.follow(() => this.#showCrosshair());
  }

  get #panel(): ResponsePanel | undefined {
    return this.#answer?.panels[this.#name];
  }

  draw(answer: LiveAnswer): void {
    const panel = answer.panels[this.#name];
    if (!panel) return;
    this.#answer = answer;
    const { x, y, right } = panel;
    this.#chart.draw({
      x,
      y,
      ...(right && { right }),
      paint: (field) => this.#paint(field),
    });
    layOver(this.#surface.element, this.#chart);
    this.#cutoffs.show(answer, panel.x);
    this.#showCrosshair();
  }

  resize(width: number, height: number): void {
    this.#chart.resize(width, height);
    layOver(this.#surface.element, this.#chart);
  }

  redraw(): void {
    this.#chart.redraw();
  }

  describe(answer: LiveAnswer): void {
    const panel = answer.panels[this.#name];
    if (panel) this.#image.setAttribute('aria-label', frequencyWords(panel, answer));
  }

  head(answer: LiveAnswer): { title: string; note: string } {
    const panel = answer.panels[this.#name];
    if (!panel) return { title: strings.pictures.panels[this.#name], note: '' };
    const whole = this.#room.app.store.state.value.view.low === undefined;
    const right = panel.right ? [strings.pictures.onTheRight(inUnit(panel.right))] : [];
    const reached = whole ? limitsReached(panel) : [];
    return {
      title: panel.title,
      note: [...(reached.length > 0 ? reached : [inUnit(panel.y)]), ...right].join(' · '),
    };
  }

  #showCrosshair(): void {
    const { value } = this.#room.crosshair;
    const panel = this.#panel;
    this.#surface.showLine(value === undefined || !panel ? undefined : placeOf(panel.x, value));
  }

  #paint(field: Field): void {
    const answer = this.#answer;
    const panel = this.#panel;
    if (!panel || !answer) return;
    const colours = this.#room.colours.value;
    const asked = { colour: colours.limit, width: 1, dash: [2, 3] };
    clipped(field, () => {
      for (const { polygon } of panel.mask ?? []) fillPolygon(field, polygon, colours.forbidden);
      for (const limit of panel.limits) strokeHorizontal(field, limit, asked);
      for (const { border } of panel.mask ?? [])
        strokeCurve(field, border, { colour: colours.limit, width: 1.25 });
      for (const cutoff of this.#fixedCutoffs(panel, answer)) strokeVertical(field, cutoff, asked);
    });
    this.#curves(field, panel);
  }

  /** Those of B, which are not dragged. */
  #fixedCutoffs(panel: ResponsePanel, { design }: LiveAnswer): number[] {
    const own = cutoffsOf(design);
    return panel.cutoffs.filter((cutoff) =>
      own.every((mine) => Math.abs(cutoff - mine) > 1e-9 * mine),
    );
  }

  #curves(field: Field, panel: ResponsePanel): void {
    const colours = this.#room.colours.value;
    clipped(field, () => {
      if (this.#name === 'sections') {
        // Neighbouring sections by dash; which is which is read from the list of what was published.
        const dashes = [[], [8, 3], [2, 2], [8, 3, 2, 3]];
        panel.curves.forEach((curve, index) => {
          const dash = dashes[index % dashes.length] ?? [];
          strokeCurve(field, curve, { colour: colours.a, width: 1, dash });
        });
        return;
      }
      // A lies above B.
      for (let index = panel.curves.length - 1; index >= 0; --index) {
        const curve = panel.curves[index];
        const pen = penOf(colours, index);
        if (curve) strokeCurve(field, curve, pen);
        panel.marks[index]?.x.forEach((x, mark) => {
          const y = panel.marks[index]?.y[mark] ?? NaN;
          strokeMark(field, index === 0 ? 'dot' : 'square', x, y, { ...pen, dash: [] });
        });
      }
    });
  }
}
