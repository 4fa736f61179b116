// Two axes with a grid, kept from one drawing to the next; what is drawn on them is the caller's.

import uPlot from 'uplot';
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
  /** Below the grid. */
  under(field: Field): void;
  /** Above it. */
  over(field: Field): void;
}

/** In pixels of the page. */
const sizes = { labelAcross: 52, labelUp: 22, acrossSpace: 46, upSpace: 26 };

const sameAxes = (a: Drawing, b: Drawing) =>
  a.x.logarithmic === b.x.logarithmic &&
  a.y.logarithmic === b.y.logarithmic &&
  (a.right === undefined) === (b.right === undefined);

export class Chart {
  readonly #place: HTMLElement;
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
    if (this.#plot) this.#plot.setSize(this.#size);
    else if (this.#drawing) this.draw(this.#drawing);
  }

  draw(drawing: Drawing): void {
    const before = this.#drawing;
    this.#drawing = drawing;
    if (!this.#size.width || !this.#size.height) return;
    if (before && this.#plot && !sameAxes(before, drawing)) {
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
    return new uPlot(
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
          drawClear: [(plot) => this.#with(plot, (made, field) => made.under(field))],
          draw: [(plot) => this.#with(plot, (made, field) => made.over(field))],
        },
      },
      [[drawing.x.low, drawing.x.high]],
      this.#place,
    );
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

  #with(plot: uPlot, draw: (drawing: Drawing, field: Field) => void): void {
    const drawing = this.#drawing;
    if (!drawing) return;
    const { left, top, width, height } = plot.bbox;
    const { x, y } = drawing;
    // The plot remembers the styles that it set, and expects to find them.
    plot.ctx.save();
    draw(drawing, { context: plot.ctx, left, top, width, height, x, y, ratio: uPlot.pxRatio });
    plot.ctx.restore();
  }
}
