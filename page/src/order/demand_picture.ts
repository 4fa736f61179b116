// A demand as a mask on a small level picture.

import { element } from '../dom.ts';
import { Chart } from '../pictures/chart.ts';
import { clipped, fillPolygon, strokeCurve, type Field } from '../pictures/strokes.ts';
import { themeOf, type Colours } from '../pictures/theme.ts';
import type { Axis, Curve } from '../session/protocol.ts';
import type { Signal } from '../state/signal.ts';
import { layOver } from '../pictures/surface.ts';
import { strings } from '../strings.ts';
import { edgesOf, frequencyOf, spansOf, type Demand } from './demand.ts';
import { Handles } from './handles.ts';

/** Axes that show all of a demand; a narrow band with as much beside it that it can be seen. */
function axesOf(demand: Demand, nyquist: number): { x: Axis; y: Axis } {
  const edges = edgesOf(demand).map((edge) => frequencyOf(demand, edge));
  const [lowest, highest] = [Math.min(...edges), Math.max(...edges)];
  const beside = (highest / lowest) ** 4;
  const isNarrow = edges.length === 4 && beside < 80;
  const low = isNarrow ? lowest / beside : Math.min(nyquist / 100, lowest / 4);
  const high = isNarrow ? Math.min(nyquist, highest * beside) : nyquist;
  const floor = -Math.max(20, Math.ceil((demand.attenuation * 1.25) / 10) * 10);
  return {
    x: { low, high, logarithmic: true, label: strings.order.frequencyAxis },
    y: { low: floor, high: 6, logarithmic: false, label: strings.order.levelAxis },
  };
}

function rectangle(from: number, to: number, low: number, high: number): Curve {
  return {
    x: Float64Array.of(from, to, to, from),
    y: Float64Array.of(low, low, high, high),
  };
}

export interface Levels {
  /** Of the present filter. */
  readonly present?: Curve;
  /** Of the candidate that is looked at. */
  readonly candidate?: Curve;
}

export class DemandPicture {
  readonly element = element('div', { class: 'plot' });
  readonly #image = element('div', {
    role: 'img',
    'aria-label': strings.order.title,
  });
  readonly #surface = element('div', { class: 'surface' });
  readonly #chart: Chart;
  readonly #handles: Handles;
  #colours: Signal<Colours> | undefined;
  #demand: Demand | undefined;
  #nyquist = 0;
  #levels: Levels = {};
  #isDragged = false;
  #axes: { x: Axis; y: Axis } | undefined;
  readonly #reframed: () => void;

  /**
   * @param change  called with the demand that a drag makes
   * @param reframed  called when the picture shows other frequencies
   */
  constructor(change: (demand: Demand) => void, reframed: () => void) {
    this.#reframed = reframed;
    this.element.append(this.#image, this.#surface);
    this.#chart = new Chart(this.#image, () => this.#theme.value);
    this.#handles = new Handles(this.#surface, {
      change,
      begin: () => (this.#isDragged = true),
      end: () => {
        this.#isDragged = false;
        this.#draw();
      },
    });
    new ResizeObserver(([entry]) => {
      if (!entry) return;
      this.#chart.resize(entry.contentRect.width, entry.contentRect.height);
      this.#layHandles();
    }).observe(this.element);
  }

  /** What the axis shows, in Hz; nothing before there is a demand. */
  get frequencies(): { readonly low: number; readonly high: number } | undefined {
    const x = this.#axes?.x;
    return x && { low: x.low, high: x.high };
  }

  show(demand: Demand, nyquist: number): void {
    this.#demand = demand;
    this.#nyquist = nyquist;
    this.#draw();
  }

  showLevels(levels: Levels): void {
    this.#levels = levels;
    this.#draw();
  }

  /** Read when something is drawn: by then it is in the page. */
  get #theme(): Signal<Colours> {
    if (!this.#colours) {
      this.#colours = themeOf(this.element);
      this.#colours.follow(() => this.#chart.redraw());
    }
    return this.#colours;
  }

  #draw(): void {
    const demand = this.#demand;
    if (!demand) return;
    const before = this.#axes;
    const axes = this.#isDragged && before ? before : axesOf(demand, this.#nyquist);
    this.#axes = axes;
    const { x, y } = axes;
    this.#image.setAttribute('aria-label', strings.order.picture(demand));
    this.#chart.draw({
      x,
      y,
      paint: (field) => {
        this.#mask(field, demand);
        this.#curves(field);
      },
    });
    this.#layHandles();
    if (x.low !== before?.x.low || x.high !== before.x.high) this.#reframed();
  }

  #layHandles(): void {
    layOver(this.#surface, this.#chart);
    if (this.#demand && this.#axes)
      this.#handles.show(this.#demand, { ...this.#axes, nyquist: this.#nyquist });
  }

  #mask(field: Field, demand: Demand): void {
    const { x, y } = field;
    const colour = this.#theme.value.forbidden;
    clipped(field, () => {
      for (const [from, to] of spansOf(demand, 'passband', x.low, x.high)) {
        fillPolygon(field, rectangle(from, to, y.low, -demand.ripple), colour);
        fillPolygon(field, rectangle(from, to, 0, y.high), colour);
      }
      for (const [from, to] of spansOf(demand, 'stopband', x.low, x.high))
        fillPolygon(field, rectangle(from, to, -demand.attenuation, y.high), colour);
    });
  }

  #curves(field: Field): void {
    const { present, candidate } = this.#levels;
    const { a, b } = this.#theme.value;
    clipped(field, () => {
      if (present) strokeCurve(field, present, { colour: a, width: 1.5 });
      if (candidate) strokeCurve(field, candidate, { colour: b, width: 1.75, dash: [6, 4] });
    });
  }
}
