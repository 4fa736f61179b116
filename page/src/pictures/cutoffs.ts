// The cutoffs as lines that are dragged with the pointer, or moved with the keyboard.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { Axis, Design, LiveAnswer } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { cutoffCount, cutoffsOf, isStoppedBelow, setCutoff } from './cutoff_settings.ts';
import { frequencyText } from './quantities.ts';
import { placeOf, valueAt } from './range.ts';

/** What is left between a cutoff and the Nyquist frequency or another cutoff, as a ratio. */
const apart = 1.001;

/** A pointer is as precise as a pixel; so many digits are enough for it. */
const digits = 4;

class Handle {
  readonly element = element('div', { class: 'cutoff', role: 'slider', tabindex: '0' });
  readonly #app: App;
  readonly #index: number;
  #axis: Axis | undefined;
  /** From the pointer to the line, so that the line does not jump when it is taken. */
  #offset: number | undefined;

  constructor(app: App, index: number) {
    this.#app = app;
    this.#index = index;
    const { element: line } = this;
    line.addEventListener('pointerdown', (event) => this.#take(event));
    line.addEventListener('pointermove', (event) => this.#move(event));
    for (const end of ['pointerup', 'pointercancel'] as const)
      line.addEventListener(end, () => this.#leave());
    line.addEventListener('keydown', (event) => this.#key(event));
    // A double click on the surface below shows all frequencies.
    line.addEventListener('dblclick', (event) => event.stopPropagation());
  }

  show(axis: Axis, hertz: number, design: Design, neighbour: number | undefined): void {
    this.#axis = axis;
    const line = this.element;
    const place = placeOf(axis, hertz);
    line.hidden = !(place >= 0 && place <= 1);
    if (line.hidden) return;
    line.style.left = `${place * 100}%`;
    line.setAttribute(
      'aria-label',
      strings.pictures.cutoff(this.#index, cutoffCount(design.settings)),
    );
    line.setAttribute('aria-valuemin', '0');
    line.setAttribute('aria-valuemax', String(design.samplerate / 2));
    line.setAttribute('aria-valuenow', String(hertz));
    line.setAttribute('aria-valuetext', frequencyText(hertz, 6));
    line.dataset['text'] = frequencyText(hertz);
    // Beside the stopband, where there is room above the curve; but neither over another cutoff's
    // text nor beyond the axis.
    const isCrowded = neighbour !== undefined && Math.abs(placeOf(axis, neighbour) - place) < 0.35;
    const isLeft = isCrowded ? neighbour > hertz : isStoppedBelow(design.settings, this.#index);
    line.classList.toggle('leftwards', isLeft ? place > 0.2 : place > 0.8);
  }

  /** Between the neighbours. */
  #set(hertz: number, precision: number): void {
    const design = this.#app.shown.value?.design;
    if (!design) return;
    const cutoffs = cutoffsOf(design);
    const nyquist = design.samplerate / 2;
    const here = cutoffs[this.#index] ?? 0;
    const others = cutoffs.filter((_, index) => index !== this.#index);
    const below = Math.max(nyquist * 1e-6, ...others.filter((other) => other < here));
    const above = Math.min(nyquist, ...others.filter((other) => other > here));
    const wanted = Math.min(Math.max(hertz, below * apart), above / apart);
    setCutoff(this.#app, this.#index, wanted, precision);
  }

  #pointed(event: PointerEvent): number {
    const box = this.element.parentElement!.getBoundingClientRect();
    return (event.clientX - box.left) / box.width;
  }

  #take(event: PointerEvent): void {
    const design = this.#app.shown.value?.design;
    const hertz = design && cutoffsOf(design)[this.#index];
    if (event.button !== 0 || hertz === undefined || !this.#axis) return;
    event.stopPropagation();
    this.element.setPointerCapture(event.pointerId);
    this.#app.store.settle();
    this.#offset = placeOf(this.#axis, hertz) - this.#pointed(event);
  }

  #move(event: PointerEvent): void {
    if (this.#offset === undefined || !this.#axis) return;
    event.stopPropagation();
    this.#set(valueAt(this.#axis, this.#pointed(event) + this.#offset), digits);
  }

  #leave(): void {
    if (this.#offset === undefined) return;
    this.#offset = undefined;
    this.#app.store.settle();
  }

  #key(event: KeyboardEvent): void {
    const design = this.#app.shown.value?.design;
    const hertz = design && cutoffsOf(design)[this.#index];
    if (hertz === undefined || event.ctrlKey || event.metaKey) return;
    const ratio = event.shiftKey ? 1.1 : event.altKey ? 1.0001 : 1.01;
    const far = 2 ** (1 / 3);
    const factors: Record<string, number> = {
      ArrowRight: ratio,
      ArrowUp: ratio,
      ArrowLeft: 1 / ratio,
      ArrowDown: 1 / ratio,
      PageUp: far,
      PageDown: 1 / far,
    };
    const factor = factors[event.key];
    if (factor === undefined) return;
    event.preventDefault();
    event.stopPropagation();
    this.#set(hertz * factor, event.altKey ? 7 : digits);
  }
}

export class Cutoffs {
  readonly #handles: Handle[] = [];
  readonly #app: App;
  readonly #place: HTMLElement;

  /** @param place  as large as the inside of the axes */
  constructor(app: App, place: HTMLElement) {
    this.#app = app;
    this.#place = place;
  }

  show({ design }: LiveAnswer, axis: Axis): void {
    const cutoffs = cutoffsOf(design);
    while (this.#handles.length < cutoffs.length) {
      const handle = new Handle(this.#app, this.#handles.length);
      this.#handles.push(handle);
      this.#place.append(handle.element);
    }
    this.#handles.forEach((handle, index) => {
      const hertz = cutoffs[index];
      if (hertz === undefined) handle.element.hidden = true;
      else handle.show(axis, hertz, design, cutoffs[1 - index]);
    });
  }
}
