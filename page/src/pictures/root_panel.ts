// A panel of the z plane, with equal scales on both axes.

import { element } from '../dom.ts';
import type { Curve, LiveAnswer, RootPanel as Shown } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { radiusText, rootAt, rootWords } from './alternative.ts';
import { penOf, type Picture, type Room } from './picture.ts';
import { frequencyText } from './quantities.ts';
import {
  across,
  clipped,
  strokeCurve,
  strokeShape,
  up,
  type Field,
  type Shape,
} from './strokes.ts';
import { ticksOf } from './ticks.ts';

export type RootPanelName = 'zeros_and_poles' | 'poles';

interface Mark {
  readonly kind: 'zero' | 'pole';
  readonly filter: number;
  readonly x: number;
  readonly y: number;
}

const shapes: Record<Mark['kind'], readonly Shape[]> = {
  zero: ['circle', 'square'],
  pole: ['cross', 'plus'],
};

/** In pixels of the page. */
const margin = { left: 44, right: 10, top: 8, bottom: 20 };
const markSize = { usual: 4, crowded: 2.5 };
/** Marks from so many on are drawn small. */
const crowd = 80;
/** How near the pointer has to be. */
const reach = 24;

export class RootPanel implements Picture {
  readonly element = element('div', { class: 'plot', tabindex: '0', role: 'group' });
  readonly #name: RootPanelName;
  readonly #room: Room;
  readonly #canvas = element('canvas', { role: 'img' });
  readonly #reading = element('span', { class: 'reading' });
  #size = { width: 0, height: 0 };
  #answer: LiveAnswer | undefined;
  #marks: Mark[] = [];
  /** Of the marks, the one that is read. */
  #read: number | undefined;

  constructor(name: RootPanelName, room: Room) {
    this.#name = name;
    this.#room = room;
    this.#canvas.setAttribute('aria-label', strings.pictures.panels[name]);
    this.element.setAttribute(
      'aria-label',
      strings.pictures.rootSurface(strings.pictures.panels[name]),
    );
    this.element.append(this.#canvas, this.#reading);
    this.element.addEventListener('pointermove', (event) => this.#point(event));
    this.element.addEventListener('pointerleave', () => this.#choose(undefined));
    this.element.addEventListener('keydown', (event) => this.#key(event));
  }

  get #panel(): Shown | undefined {
    return this.#answer?.panels[this.#name];
  }

  draw(answer: LiveAnswer): void {
    const panel = answer.panels[this.#name];
    if (!panel) return;
    this.#answer = answer;
    this.#marks = marksOf(panel);
    if (this.#read !== undefined && this.#read >= this.#marks.length) this.#read = undefined;
    this.redraw();
    this.#say();
  }

  resize(width: number, height: number): void {
    this.#size = { width, height };
    this.redraw();
  }

  describe(answer: LiveAnswer): void {
    const panel = answer.panels[this.#name];
    if (panel) this.#canvas.setAttribute('aria-label', rootWords(panel));
  }

  head(answer: LiveAnswer): { title: string; note: string } {
    const panel = answer.panels[this.#name];
    return {
      title: panel?.title ?? strings.pictures.panels[this.#name],
      note: panel ? `${panel.x.label}, ${panel.y.label}` : '',
    };
  }

  redraw(): void {
    const panel = this.#panel;
    const field = panel && this.#field(panel);
    if (!field) return;
    const { context } = field;
    context.clearRect(0, 0, this.#canvas.width, this.#canvas.height);
    this.#grid(field);
    const colours = this.#room.colours.value;
    clipped(field, () => {
      strokeCurve(field, panel.circle, { colour: colours.muted, width: 1.25 });
      strokeCurve(field, panel.frame, { colour: colours.ink, width: 1, dash: [3, 2] });
    });
    // Marks at the edge are drawn whole.
    for (const mark of this.#marks) this.#stroke(field, mark);
    this.#multiplicities(field, panel);
    const read = this.#read === undefined ? undefined : this.#marks[this.#read];
    if (read)
      strokeShape(field, 'circle', [across(field)(read.x), up(field)(read.y)], 9, {
        colour: colours.ink,
        width: 1.5,
      });
  }

  /** The canvas in its size, and equal scales in the middle of it. */
  #field(panel: Shown): Field | undefined {
    const ratio = devicePixelRatio;
    const width = Math.round(this.#size.width * ratio);
    const height = Math.round(this.#size.height * ratio);
    const inner = {
      width: width - (margin.left + margin.right) * ratio,
      height: height - (margin.top + margin.bottom) * ratio,
    };
    const context = this.#canvas.getContext('2d');
    if (!context || inner.width <= 0 || inner.height <= 0) return undefined;
    if (this.#canvas.width !== width) this.#canvas.width = width;
    if (this.#canvas.height !== height) this.#canvas.height = height;
    const { x, y } = panel;
    const scale = Math.min(inner.width / (x.high - x.low), inner.height / (y.high - y.low));
    const [across, up] = [scale * (x.high - x.low), scale * (y.high - y.low)];
    return {
      context,
      ratio,
      left: Math.round(margin.left * ratio + (inner.width - across) / 2),
      top: Math.round(margin.top * ratio + (inner.height - up) / 2),
      width: Math.round(across),
      height: Math.round(up),
      x,
      y,
    };
  }

  #grid(field: Field): void {
    const { context, ratio, left, top, width, height } = field;
    const colours = this.#room.colours.value;
    const toX = across(field);
    const toY = up(field);
    context.save();
    context.font = `${11 * ratio}px system-ui, sans-serif`;
    context.lineWidth = Math.round(ratio);
    context.strokeStyle = colours.grid;
    context.fillStyle = colours.muted;
    context.textAlign = 'center';
    context.textBaseline = 'top';
    const most = Math.max(2, Math.floor(width / ratio / 56));
    context.beginPath();
    for (const { value, text } of ticksOf(field.x, most)) {
      const place = Math.round(toX(value)) + 0.5;
      context.moveTo(place, top);
      context.lineTo(place, top + height);
      context.fillText(text, place, top + height + 4 * ratio);
    }
    context.textAlign = 'right';
    context.textBaseline = 'middle';
    for (const { value, text } of ticksOf(field.y, most)) {
      const place = Math.round(toY(value)) + 0.5;
      context.moveTo(left, place);
      context.lineTo(left + width, place);
      context.fillText(text, left - 4 * ratio, place);
    }
    context.stroke();
    context.restore();
  }

  #stroke(field: Field, { kind, filter, x, y }: Mark): void {
    const shape = shapes[kind][filter] ?? 'diamond';
    const size = this.#marks.length < crowd ? markSize.usual : markSize.crowded;
    const { colour } = penOf(this.#room.colours.value, filter);
    strokeShape(field, shape, [across(field)(x), up(field)(y)], size, { colour, width: 1.5 });
  }

  #multiplicities(field: Field, panel: Shown): void {
    const { context, ratio } = field;
    context.save();
    context.font = `${11 * ratio}px system-ui, sans-serif`;
    context.fillStyle = this.#room.colours.value.ink;
    context.textBaseline = 'middle';
    for (const { x, y, counts } of panel.labels) {
      // Outwards of the circle, and inwards where that would leave the picture.
      const place = across(field)(x);
      const isRight = place > field.left + field.width - 20 * ratio;
      context.textAlign = isRight ? 'right' : 'left';
      const aside = (isRight ? -8 : 8) * ratio;
      context.fillText(counts.join(', '), place + aside, up(field)(y) - 8 * ratio);
    }
    context.restore();
  }

  #point(event: PointerEvent): void {
    const panel = this.#panel;
    const field = panel && this.#field(panel);
    if (!field) return;
    const box = this.#canvas.getBoundingClientRect();
    const x = (event.clientX - box.left) * field.ratio;
    const y = (event.clientY - box.top) * field.ratio;
    let nearest: number | undefined;
    let least = reach * field.ratio;
    this.#marks.forEach((mark, index) => {
      const distance = Math.hypot(across(field)(mark.x) - x, up(field)(mark.y) - y);
      if (distance < least) [nearest, least] = [index, distance];
    });
    this.#choose(nearest);
  }

  #choose(index: number | undefined): void {
    if (index === this.#read) return;
    this.#read = index;
    this.redraw();
    this.#say();
  }

  #say(): void {
    const mark = this.#read === undefined ? undefined : this.#marks[this.#read];
    this.#reading.textContent =
      mark && this.#answer && this.#panel ? textOf(mark, this.#panel, this.#answer) : '';
  }

  #key(event: KeyboardEvent): void {
    const count = this.#marks.length;
    if (count === 0 || event.ctrlKey || event.metaKey || event.altKey) return;
    const now = this.#read ?? -1;
    const places: Record<string, number | undefined> = {
      ArrowRight: (now + 1) % count,
      ArrowLeft: now <= 0 ? count - 1 : now - 1,
      Home: 0,
      End: count - 1,
      Escape: undefined,
    };
    if (!(event.key in places)) return;
    event.preventDefault();
    this.#choose(places[event.key]);
    this.#room.app.announce(this.#reading.textContent ?? '');
  }
}

/** All roots within the axes, by angle: conjugates follow each other. */
function marksOf({ filters, x, y, origin: [real, imaginary], unit }: Shown): Mark[] {
  const marks: Mark[] = [];
  const add = (kind: Mark['kind'], filter: number, roots: Curve) =>
    roots.x.forEach((right, index) => {
      const up = roots.y[index] ?? NaN;
      if (right >= x.low && right <= x.high && up >= y.low && up <= y.high)
        marks.push({ kind, filter, x: right, y: up });
    });
  filters.forEach(({ zeros, poles }, filter) => {
    add('zero', filter, zeros);
    add('pole', filter, poles);
  });
  const angle = (mark: Mark) =>
    Math.abs(Math.atan2(imaginary + mark.y / unit, real + mark.x / unit));
  return marks.sort((a, b) => a.filter - b.filter || angle(a) - angle(b));
}

function textOf(
  { kind, filter, x, y }: Mark,
  { origin: [real, imaginary], unit }: Shown,
  { design, other }: LiveAnswer,
): string {
  const { samplerate } = filter === 0 || !other ? design : other;
  const { radius, frequency } = rootAt(real + x / unit, imaginary + y / unit, samplerate);
  const name = other ? `${'AB'[filter]}: ` : '';
  return name + strings.pictures.root(kind, radiusText(radius), frequencyText(frequency, 5));
}
