// A panel over time: stems where each sample can be told from the next, lines otherwise.

import { element } from '../dom.ts';
import type { LiveAnswer, TimePanel as Shown } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { timeWords } from './alternative.ts';
import { Chart } from './chart.ts';
import { penOf, type Picture, type Room } from './picture.ts';
import { significant, unitOf } from './quantities.ts';
import { placeOf, valueAt } from './range.ts';
import { layOver, Surface } from './surface.ts';
import { nearestOn } from './reading.ts';
import { clipped, strokeCurve, strokeHorizontal, strokeStems, type Field } from './strokes.ts';

export type TimePanelName = 'impulse' | 'step';

export class TimePanel implements Picture {
  readonly element = element('div', { class: 'plot' });
  readonly #name: TimePanelName;
  readonly #room: Room;
  readonly #image = element('div', { role: 'img' });
  readonly #surface: Surface;
  readonly #reading = element('span', { class: 'reading' });
  readonly #chart: Chart;
  #panel: Shown | undefined;
  /** The sample that is read. */
  #sample: number | undefined;

  constructor(name: TimePanelName, room: Room) {
    this.#name = name;
    this.#room = room;
    this.#image.setAttribute('aria-label', strings.pictures.panels[name]);
    this.#surface = new Surface(strings.pictures.timeSurface(strings.pictures.panels[name]));
    const { element: surface } = this.#surface;
    this.element.append(this.#image, surface, this.#reading);
    this.#chart = new Chart(this.#image, () => room.colours.value);
    surface.addEventListener('pointermove', (event) => {
      const box = surface.getBoundingClientRect();
      const [curve] = this.#panel?.curves ?? [];
      if (!curve || !this.#panel) return;
      const place = (event.clientX - box.left) / box.width;
      this.#read(nearestOn(curve, valueAt(this.#panel.x, place)));
    });
    surface.addEventListener('pointerleave', () => this.#read(undefined));
    surface.addEventListener('keydown', (event) => this.#key(event));
  }

  draw(answer: LiveAnswer): void {
    const panel = answer.panels[this.#name];
    if (!panel) return;
    this.#panel = panel;
    this.#chart.draw({
      x: panel.x,
      y: panel.y,
      paint: (field) => this.#paint(field, panel),
    });
    layOver(this.#surface.element, this.#chart);
    this.#read(this.#sample);
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
    if (panel) this.#image.setAttribute('aria-label', timeWords(panel));
  }

  head(answer: LiveAnswer): { title: string; note: string } {
    const panel = answer.panels[this.#name];
    return {
      title: panel?.title ?? strings.pictures.panels[this.#name],
      note: panel?.x.label ?? '',
    };
  }

  #paint(field: Field, panel: Shown): void {
    const colours = this.#room.colours.value;
    clipped(field, () => {
      strokeHorizontal(field, 0, { colour: colours.muted, width: 1 });
      for (let index = panel.curves.length - 1; index >= 0; --index) {
        const curve = panel.curves[index];
        if (!curve) continue;
        const pen = penOf(colours, index);
        if (panel.shows_samples) strokeStems(field, curve, { ...pen, width: 1.25 }, index === 0);
        else strokeCurve(field, curve, pen);
      }
    });
  }

  #read(sample: number | undefined): void {
    this.#sample = sample;
    const panel = this.#panel;
    const time = sample === undefined ? undefined : panel?.curves[0]?.x[sample];
    this.#surface.showLine(panel && time !== undefined ? placeOf(panel.x, time) : undefined);
    this.#reading.textContent = '';
    if (!panel || time === undefined) return;
    const values = panel.curves.map((curve, index) => {
      const nearest = nearestOn(curve, time);
      const value = significant(nearest === undefined ? NaN : (curve.y[nearest] ?? NaN), 5);
      return panel.curves.length > 1 ? `${'AB'[index]} ${value}` : value;
    });
    this.#reading.textContent = `${significant(time, 5)} ${unitOf(panel.x.label)}: ${values.join('  ')}`;
  }

  #key(event: KeyboardEvent): void {
    const count = this.#panel?.curves[0]?.x.length ?? 0;
    if (count === 0 || event.ctrlKey || event.metaKey || event.altKey) return;
    const by = event.shiftKey ? Math.max(1, Math.round(count / 20)) : 1;
    const now = this.#sample ?? -1;
    const places: Record<string, number | undefined> = {
      ArrowLeft: Math.max(now - by, 0),
      ArrowRight: Math.min(now + by, count - 1),
      Home: 0,
      End: count - 1,
      Escape: undefined,
    };
    if (!(event.key in places)) return;
    event.preventDefault();
    this.#read(places[event.key]);
    this.#room.app.announce(this.#reading.textContent ?? '');
  }
}
