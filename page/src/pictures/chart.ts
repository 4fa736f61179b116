// Two axes with a grid; what is drawn over them is the caller's, on a canvas of its own: while a dial
// turns, most axes stay as they are, and their texts take longer than the curves.

import uPlot from 'uplot';
import { element } from '../dom.ts';
import type { Axis } from '../session/protocol.ts';
import { unitOf } from './quantities.ts';
import type { Range } from './range.ts';
import type { Field } from './strokes.ts';
import type { Colours } from './theme.ts';
import { ticksOf, type Tick } from './ticks.ts';

export interface Drawing {
  readonly x: Axis;
  readonly y: Axis;
  readonly right?: Axis;
  paint(field: Field): void;
}

/** In pixels of the page. */
const sizes = { labelAcross: 52, labelUp: 22, acrossSpace: 46, upSpace: 26 };

/** Whether two drawings have axes of the same kinds. */
const sameKinds = (a: Drawing, b: Drawing) =>
  a.x.logarithmic === b.x.logarithmic &&
  a.y.logarithmic === b.y.logarithmic &&
  (a.right === undefined) === (b.right === undefined);

const sameAxis = (a: Axis | undefined, b: Axis | undefined) =>
  a?.low === b?.low && a?.high === b?.high && a?.label === b?.label;

const sameAxes = (a: Drawing, b: Drawing) =>
  sameKinds(a, b) && sameAxis(a.x, b.x) && sameAxis(a.y, b.y) && sameAxis(a.right, b.right);

export class Chart {
  readonly #place: HTMLElement;
  readonly #canvas = element('canvas', { class: 'curves' });
  readonly #colours: () => Colours;
  #plot: uPlot | undefined;
  #drawing: Drawing | undefined;
  #size = { width: 0, height: 0 };

  /** @param place  where the chart is put, and whose size it takes */
  constructor(place: HTMLElement, colours: () => Colours) {
    this.#place = place;
    this.#colours = colours;
  }

  /** The part inside of the axes, within the chart and in pixels of the page; empty before the first
   *  drawing. */
  get inside(): { left: number; top: number; width: number; height: number } {
    const box = this.#plot?.bbox;
    if (!box) return { left: 0, top: 0, width: 0, height: 0 };
    const ratio = uPlot.pxRatio;
    return {
      left: box.left / ratio,
      top: box.top / ratio,
      width: box.width / ratio,
      height: box.height / ratio,
    };
  }

  /** Takes a size in pixels of the page, and draws again. */
  resize(width: number, height: number): void {
    this.#size = { width: Math.floor(width), height: Math.floor(height) };
    const plot = this.#plot;
    if (plot) plot.batch(() => plot.setSize(this.#size));
    else if (this.#drawing) this.draw(this.#drawing);
  }

  draw(drawing: Drawing): void {
    const before = this.#drawing;
    this.#drawing = drawing;
    if (!this.#size.width || !this.#size.height) return;
    if (before && this.#plot && sameAxes(before, drawing)) {
      this.#paint(this.#plot);
      return;
    }
    if (before && this.#plot && !sameKinds(before, drawing)) {
      this.#plot.destroy();
      this.#plot = undefined;
    }
    this.#plot ??= this.#made(drawing);
    const plot = this.#plot;
    plot.batch(() => {
      plot.setData([[drawing.x.low, drawing.x.high]], false);
      plot.setScale('x', { min: drawing.x.low, max: drawing.x.high });
      plot.setScale('y', { min: drawing.y.low, max: drawing.y.high });
      if (drawing.right)
        plot.setScale('right', { min: drawing.right.low, max: drawing.right.high });
    });
  }

  /** Draws the same again, in other colours. */
  redraw(): void {
    this.#plot?.redraw(false, true);
  }

  #made(drawing: Drawing): uPlot {
    const scale = ({ logarithmic }: Range): uPlot.Scale => ({
      time: false,
      auto: false,
      distr: logarithmic ? 3 : 1,
      range: (_, low, high) => [low, high],
    });
    const plot = new uPlot(
      {
        ...this.#size,
        pxAlign: true,
        legend: { show: false },
        cursor: { show: false },
        padding: [8, drawing.right ? 0 : 12, 0, 0],
        series: [{}],
        scales: {
          x: scale(drawing.x),
          y: scale(drawing.y),
          ...(drawing.right && { right: scale(drawing.right) }),
        },
        axes: [
          this.#axis('x', 2, sizes.labelUp, sizes.acrossSpace, () => this.#drawing?.x),
          this.#axis('y', 3, sizes.labelAcross, sizes.upSpace, () => this.#drawing?.y),
          ...(drawing.right
            ? [this.#axis('right', 1, sizes.labelAcross, sizes.upSpace, () => this.#drawing?.right)]
            : []),
        ],
        hooks: {
          draw: [(plot) => this.#paint(plot)],
        },
      },
      [[drawing.x.low, drawing.x.high]],
      this.#place,
    );
    this.#place.append(this.#canvas);
    return plot;
  }

  #axis(
    scale: string,
    side: uPlot.Axis.Side,
    size: number,
    space: number,
    axis: () => Axis | undefined,
  ): uPlot.Axis {
    let ticks: Tick[] = [];
    const colour = (name: keyof Colours) => () => this.#colours()[name];
    return {
      scale,
      side,
      size,
      gap: 3,
      font: '11px system-ui, sans-serif',
      stroke: colour('muted'),
      grid: { show: scale !== 'right', stroke: colour('grid'), width: 1 },
      ticks: { show: false },
      splits: (plot) => {
        const shown = axis();
        const length = scale === 'x' ? plot.bbox.width : plot.bbox.height;
        const most = Math.max(2, Math.floor(length / uPlot.pxRatio / space));
        ticks = shown ? ticksOf(shown, most, unitOf(shown.label)) : [];
        return ticks.map(({ value }) => value);
      },
      filter: (_, splits) => splits,
      values: () => ticks.map(({ text }) => text),
    };
  }

  #paint(plot: uPlot): void {
    const context = this.#canvas.getContext('2d');
    const drawing = this.#drawing;
    if (!context || !drawing) return;
    const { width, height } = plot.ctx.canvas;
    // A size that is set clears the canvas.
    if (this.#canvas.width !== width || this.#canvas.height !== height)
      Object.assign(this.#canvas, { width, height });
    else context.clearRect(0, 0, width, height);
    const { x, y } = drawing;
    drawing.paint({ ...plot.bbox, context, x, y, ratio: uPlot.pxRatio });
  }
}
