// Pointer, wheel and keyboard on a panel over frequency: they read, zoom and pan.

import type { App } from '../app.ts';
import type { Axis } from '../session/protocol.ts';
import { announceReading, type Crosshair } from './crosshair.ts';
import { panned, placeOf, valueAt, zoomed, type Range } from './range.ts';
import { isZoomed, pan, show, showAll, startOf, zoom } from './view.ts';

export interface Surface {
  readonly app: App;
  readonly crosshair: Crosshair;
  /** Takes the pointer and the keyboard; as large as the inside of the axes. */
  readonly element: HTMLElement;
  /** Of frequency; undefined before the first drawing. */
  axis(): Axis | undefined;
}

/** How long a page that scrolls goes on scrolling when a panel comes below the pointer, in ms. */
const scrollPause = 300;

let scrolledAt = -Infinity;
addEventListener('scroll', () => (scrolledAt = performance.now()), {
  passive: true,
  capture: true,
});

function placeIn({ element }: Surface, event: MouseEvent): number {
  const box = element.getBoundingClientRect();
  return (event.clientX - box.left) / box.width;
}

function onWheel(surface: Surface, event: WheelEvent): void {
  const axis = surface.axis();
  if (!axis || performance.now() - scrolledAt < scrollPause) return;
  const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 33 : 1;
  const { app } = surface;
  if (Math.abs(event.deltaX) > Math.abs(event.deltaY)) {
    if (!isZoomed(app.store.state.value.view)) return;
    pan(app, axis, (event.deltaX * lines) / surface.element.clientWidth);
    event.preventDefault();
    return;
  }
  const turned = Math.max(-300, Math.min(300, event.deltaY * lines));
  const about = valueAt(axis, placeIn(surface, event));
  // Where there is nothing left to zoom out of, the page scrolls.
  if (zoom(app, axis, 2 ** (turned / 200), about) || turned < 0) event.preventDefault();
}

/** One pointer pans, two pinch. */
class Fingers {
  readonly #surface: Surface;
  readonly #places = new Map<number, number>();
  #start: { readonly range: Range; readonly places: ReadonlyMap<number, number> } | undefined;

  constructor(surface: Surface) {
    this.#surface = surface;
  }

  get down(): number {
    return this.#places.size;
  }

  put(event: PointerEvent): void {
    this.#surface.element.setPointerCapture(event.pointerId);
    this.#places.set(event.pointerId, placeIn(this.#surface, event));
    this.#begin();
  }

  lift(event: PointerEvent): void {
    if (!this.#places.delete(event.pointerId)) return;
    this.#begin();
    if (this.#places.size === 0) this.#surface.app.store.settle();
  }

  move(event: PointerEvent): void {
    if (!this.#start || !this.#places.has(event.pointerId)) return;
    this.#places.set(event.pointerId, placeIn(this.#surface, event));
    const { app } = this.#surface;
    const { range } = this.#start;
    const [one, two] = [...this.#places].map(([id, now]) => ({
      now,
      before: this.#start?.places.get(id) ?? now,
    }));
    if (one && two) {
      const gap = Math.max(Math.abs(one.now - two.now), 0.02);
      const factor = Math.abs(one.before - two.before) / gap;
      const middle = (one.before + two.before) / 2;
      const moved = middle - (one.now + two.now) / 2;
      show(app, panned(zoomed(range, factor, middle), moved));
    } else if (one && isZoomed(app.store.state.value.view))
      show(app, panned(range, one.before - one.now));
  }

  #begin(): void {
    const axis = this.#surface.axis();
    this.#start = axis && {
      range: startOf(this.#surface.app, axis),
      places: new Map(this.#places),
    };
  }
}

/** Part of an axis that an arrow key moves by. */
const step = 0.01;

function onKey(surface: Surface, event: KeyboardEvent): void {
  const axis = surface.axis();
  if (!axis || event.ctrlKey || event.metaKey || event.altKey) return;
  if (event.target !== surface.element) return;
  const { app, crosshair } = surface;
  const middle = valueAt(axis, 0.5);
  const place = () => placeOf(axis, crosshair.value ?? middle);
  const read = (to: number) => {
    crosshair.set(valueAt(axis, Math.min(Math.max(to, 0), 1)));
    announceReading(app, crosshair);
  };
  const about = crosshair.value ?? middle;
  const actions: Record<string, () => void> = {
    ArrowLeft: () => (event.shiftKey ? pan(app, axis, -0.1) : read(place() - step)),
    ArrowRight: () => (event.shiftKey ? pan(app, axis, 0.1) : read(place() + step)),
    PageDown: () => read(place() - 10 * step),
    PageUp: () => read(place() + 10 * step),
    Home: () => read(0),
    End: () => read(1),
    '+': () => void zoom(app, axis, 1 / Math.SQRT2, about),
    '=': () => void zoom(app, axis, 1 / Math.SQRT2, about),
    '-': () => void zoom(app, axis, Math.SQRT2, about),
    '0': () => showAll(app),
    Escape: () => crosshair.set(undefined),
  };
  const action = actions[event.key];
  if (!action) return;
  event.preventDefault();
  action();
}

export function follow(surface: Surface): void {
  const { element, crosshair, app } = surface;
  const fingers = new Fingers(surface);
  const read = (event: PointerEvent) => {
    const axis = surface.axis();
    if (axis) crosshair.set(valueAt(axis, Math.min(Math.max(placeIn(surface, event), 0), 1)));
  };
  element.addEventListener('wheel', (event) => onWheel(surface, event), { passive: false });
  element.addEventListener('keydown', (event) => onKey(surface, event));
  element.addEventListener('dblclick', () => showAll(app));
  element.addEventListener('pointerdown', (event) => {
    if (event.button === 0 && event.target === element) fingers.put(event);
  });
  element.addEventListener('pointermove', (event) => {
    fingers.move(event);
    if (fingers.down < 2) read(event);
  });
  for (const end of ['pointerup', 'pointercancel'] as const)
    element.addEventListener(end, (event) => fingers.lift(event));
  element.addEventListener('pointerleave', (event) => {
    if (event.pointerType === 'mouse' && document.activeElement !== element)
      crosshair.set(undefined);
  });
}
