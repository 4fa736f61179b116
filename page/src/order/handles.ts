// What is dragged in the picture of a demand: the edges, the ripple and the attenuation.

import { element } from '../dom.ts';
import { frequencyText, significant } from '../pictures/quantities.ts';
import { placeOf, valueAt, type Range } from '../pictures/range.ts';
import { strings } from '../strings.ts';
import { edgesOf, frequencyOf, spansOf, withEdge, type Demand } from './demand.ts';
import { labelRows } from './label_rows.ts';

/** The axes, and half the sample rate. */
export interface Ground {
  readonly x: Range;
  readonly y: Range;
  readonly nyquist: number;
}

interface Grip {
  readonly label: string;
  readonly isAcross: boolean;
  place(demand: Demand, ground: Ground): { readonly x: number; readonly y: number };
  value(demand: Demand): number;
  text(demand: Demand): string;
  /** From where it was taken: places of the picture, right and down. */
  moved(demand: Demand, ground: Ground, right: number, down: number): Demand;
  /** By an arrow key: up or right is +1. */
  stepped(demand: Demand, ground: Ground, steps: number): Demand;
}

const rounded = (value: number) => Number(value.toPrecision(4));

const clamp = (value: number, low: number, high: number) => Math.min(Math.max(value, low), high);

function gripsOf(demand: Demand): Grip[] {
  const edges = edgesOf(demand).map((edge): Grip => {
    const set = (from: Demand, ground: Ground, hertz: number) =>
      withEdge(from, edge, rounded(hertz), ground.nyquist);
    return {
      label: strings.order.edge(edge.band, edge.index, demand[edge.band].length),
      isAcross: true,
      place: (now, { x, y }) => ({
        x: placeOf(x, frequencyOf(now, edge)),
        y: 1 - placeOf(y, edge.band === 'passband' ? y.low / 2 : -now.attenuation / 2),
      }),
      value: (now) => frequencyOf(now, edge),
      text: (now) => frequencyText(frequencyOf(now, edge)),
      moved: (from, ground, right) =>
        set(from, ground, valueAt(ground.x, placeOf(ground.x, frequencyOf(from, edge)) + right)),
      stepped: (from, ground, steps) => set(from, ground, frequencyOf(from, edge) * 1.01 ** steps),
    };
  });
  const middle = (now: Demand, band: 'passband' | 'stopband', { x }: Ground) => {
    const [from = x.low, to = x.high] = spansOf(now, band, x.low, x.high)[0] ?? [];
    return (placeOf(x, from) + placeOf(x, to)) / 2;
  };
  const withRipple = (now: Demand, ripple: number): Demand => ({
    ...now,
    ripple: rounded(clamp(ripple, 0.001, Math.min(12, now.attenuation * 0.9))),
  });
  const withAttenuation = (now: Demand, attenuation: number): Demand => ({
    ...now,
    attenuation: rounded(clamp(attenuation, Math.max(1, now.ripple * 1.1), 240)),
  });
  return [
    ...edges,
    {
      label: strings.order.ripple,
      isAcross: false,
      place: (now, ground) => ({
        x: middle(now, 'passband', ground),
        y: 1 - placeOf(ground.y, -now.ripple),
      }),
      value: (now) => now.ripple,
      text: (now) => `${significant(now.ripple, 3)} dB`,
      // A ripple is too small for the scale of the picture: its whole height is a factor of 1000.
      moved: (from, _, _right, down) => withRipple(from, from.ripple * 1000 ** down),
      stepped: (from, _, steps) => withRipple(from, from.ripple / 1.1 ** steps),
    },
    {
      label: strings.order.attenuation,
      isAcross: false,
      place: (now, ground) => ({
        x: middle(now, 'stopband', ground),
        y: 1 - placeOf(ground.y, -now.attenuation),
      }),
      value: (now) => now.attenuation,
      text: (now) => `${significant(now.attenuation, 4)} dB`,
      moved: (from, { y }, _, down) =>
        withAttenuation(from, from.attenuation + down * (y.high - y.low)),
      stepped: (from, _, steps) => withAttenuation(from, from.attenuation - steps),
    },
  ];
}

/** Where the labels of edges stand at the left of them, as a part of the width. */
const lateFrom = 0.75;

/** Of the longest label of an edge, "12.35 kHz", and what is beside it; in pixels. */
const labelWidth = 72;

export interface HandleEvents {
  change(demand: Demand): void;
  /** While something is dragged, the axes stay. */
  begin(): void;
  end(): void;
}

export class Handles {
  readonly #place: HTMLElement;
  readonly #events: HandleEvents;
  #made: { readonly grip: Grip; readonly element: HTMLElement }[] = [];
  #response = '';
  #demand: Demand | undefined;
  #ground: Ground | undefined;

  /** @param place  as large as the inside of the axes */
  constructor(place: HTMLElement, events: HandleEvents) {
    this.#place = place;
    this.#events = events;
  }

  show(demand: Demand, ground: Ground): void {
    this.#demand = demand;
    this.#ground = ground;
    if (demand.response !== this.#response) {
      this.#response = demand.response;
      this.#place.dataset['response'] = demand.response;
      this.#made = gripsOf(demand).map((grip) => ({ grip, element: this.#handle(grip) }));
      this.#place.replaceChildren(...this.#made.map((handle) => handle.element));
    }
    for (const { grip, element: line } of this.#made) {
      const { x, y } = grip.place(demand, ground);
      line.style.left = `${x * 100}%`;
      if (!grip.isAcross) line.style.top = `${y * 100}%`;
      line.setAttribute('aria-valuenow', String(grip.value(demand)));
      line.setAttribute('aria-valuetext', grip.text(demand));
      line.setAttribute('aria-valuemin', '0');
      line.setAttribute('aria-valuemax', String(grip.isAcross ? ground.nyquist : 240));
      line.dataset['text'] = grip.text(demand);
      line.classList.toggle('late', x > lateFrom);
    }
    this.#stagger(demand, ground);
  }

  /** The labels of edges that are close stand one above the other. */
  #stagger(demand: Demand, ground: Ground): void {
    const edges = this.#made.filter(({ grip }) => grip.isAcross);
    const width = labelWidth / Math.max(1, this.#place.clientWidth);
    const rows = labelRows(
      edges.map(({ grip }) => {
        const { x } = grip.place(demand, ground);
        return x > lateFrom ? { from: x - width, to: x } : { from: x, to: x + width };
      }),
    );
    edges.forEach(({ element: line }, index) => line.style.setProperty('--row', `${rows[index]}`));
  }

  #handle(grip: Grip): HTMLElement {
    const made = element('div', {
      class: `handle ${grip.isAcross ? 'across' : 'upright'}`,
      role: 'slider',
      tabindex: '0',
      'aria-label': grip.label,
      'aria-orientation': grip.isAcross ? 'horizontal' : 'vertical',
      title: grip.label,
    });
    let taken: { x: number; y: number; demand: Demand; ground: Ground } | undefined;
    made.addEventListener('pointerdown', (event) => {
      if (event.button !== 0 || !this.#demand || !this.#ground) return;
      made.setPointerCapture(event.pointerId);
      taken = { x: event.clientX, y: event.clientY, demand: this.#demand, ground: this.#ground };
      this.#events.begin();
    });
    made.addEventListener('pointermove', (event) => {
      if (!taken) return;
      const box = this.#place.getBoundingClientRect();
      const right = (event.clientX - taken.x) / box.width;
      const down = (event.clientY - taken.y) / box.height;
      this.#events.change(grip.moved(taken.demand, taken.ground, right, down));
    });
    for (const end of ['pointerup', 'pointercancel'] as const)
      made.addEventListener(end, () => {
        if (!taken) return;
        taken = undefined;
        this.#events.end();
      });
    made.addEventListener('keydown', (event) => this.#key(grip, event));
    return made;
  }

  #key(grip: Grip, event: KeyboardEvent): void {
    const steps: Record<string, number> = {
      ArrowRight: 1,
      ArrowUp: 1,
      ArrowLeft: -1,
      ArrowDown: -1,
      PageUp: 10,
      PageDown: -10,
    };
    const step = steps[event.key];
    if (step === undefined || event.ctrlKey || event.metaKey || !this.#demand || !this.#ground)
      return;
    event.preventDefault();
    const times = event.shiftKey ? 10 : 1;
    this.#events.change(grip.stepped(this.#demand, this.#ground, step * times));
  }
}
