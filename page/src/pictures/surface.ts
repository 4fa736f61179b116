// What lies over the inside of a chart's axes, takes pointer and keyboard, and shows a crosshair.

import { element } from '../dom.ts';
import type { Chart } from './chart.ts';

/** Lays an element over the inside of the axes. */
export function layOver(made: HTMLElement, { inside }: Chart): void {
  const { left, top, width, height } = inside;
  for (const [side, length] of Object.entries({ left, top, width, height })) {
    const text = `${length}px`;
    // What is set again is laid out again.
    if (made.style.getPropertyValue(side) !== text) made.style.setProperty(side, text);
  }
}

export class Surface {
  readonly element: HTMLElement;
  readonly #line = element('div', { class: 'crosshair', hidden: '' });

  constructor(label: string) {
    this.element = element('div', {
      class: 'surface',
      role: 'group',
      tabindex: '0',
      'aria-label': label,
    });
    this.element.append(this.#line);
  }

  /** @param place  from 0, on the left, to 1; the crosshair is hidden anywhere else */
  showLine(place: number | undefined): void {
    this.#line.hidden = place === undefined || !(place >= 0 && place <= 1);
    if (!this.#line.hidden) this.#line.style.left = `${place! * 100}%`;
  }
}
