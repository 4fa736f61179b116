// Curves, areas and marks on a canvas, in its own pixels.

import type { Curve } from '../session/protocol.ts';
import { placeOf, type Range } from './range.ts';

/** Where the units of two axes lie on a canvas. */
export interface Field {
  readonly context: CanvasRenderingContext2D;
  readonly left: number;
  readonly top: number;
  readonly width: number;
  readonly height: number;
  readonly x: Range;
  readonly y: Range;
  /** Pixels of the canvas for one of the page. */
  readonly ratio: number;
}

export interface Pen {
  readonly colour: string;
  /** In pixels of the page. */
  readonly width: number;
  readonly dash?: readonly number[];
}

/** A function from values of an axis to pixels; values beyond it stay near it, where a canvas draws
 *  them well. */
function pixels(range: Range, begin: number, length: number): (value: number) => number {
  const far = 8 * Math.abs(length);
  const clamp = (place: number) =>
    Math.min(Math.max(begin + place * length, begin - far), begin + far);
  const { low, high } = range;
  if (!range.logarithmic) {
    const scale = 1 / (high - low);
    return (value) => clamp((value - low) * scale);
  }
  const first = Math.log(low);
  const scale = 1 / (Math.log(high) - first);
  return (value) =>
    value > 0 ? clamp((Math.log(value) - first) * scale) : begin - Math.sign(length) * far;
}

export function across(field: Field): (value: number) => number {
  return pixels(field.x, field.left, field.width);
}

export function up(field: Field): (value: number) => number {
  return pixels(field.y, field.top + field.height, -field.height);
}

/** Draws within the field only. */
export function clipped(field: Field, draw: () => void): void {
  const { context } = field;
  context.save();
  context.beginPath();
  context.rect(field.left, field.top, field.width, field.height);
  context.clip();
  draw();
  context.restore();
}

function take(field: Field, pen: Pen): void {
  const { context, ratio } = field;
  context.strokeStyle = pen.colour;
  context.lineWidth = pen.width * ratio;
  context.lineJoin = 'round';
  context.setLineDash((pen.dash ?? []).map((part) => part * ratio));
}

/** Adds to the path what of a curve can be told apart: of the points in one column of pixels the
 *  first, the lowest, the highest and the last. */
function trace(field: Field, { x, y }: Curve): void {
  const { context } = field;
  const toX = across(field);
  const toY = up(field);
  let column = NaN;
  let low = 0;
  let high = 0;
  let last = 0;
  const endColumn = () => {
    if (Number.isNaN(column) || low === high) return;
    context.lineTo(column, low);
    context.lineTo(column, high);
    context.lineTo(column, last);
  };
  for (let index = 0; index < x.length; ++index) {
    const value = y[index] ?? NaN;
    // A silent filter has a level of minus infinity: it lies below any picture.
    if (Number.isNaN(value)) {
      endColumn();
      column = NaN;
      continue;
    }
    const place = toX(x[index] ?? NaN);
    const height = toY(value);
    if (Math.abs(place - column) < 0.5) {
      low = Math.min(low, height);
      high = Math.max(high, height);
      last = height;
      continue;
    }
    endColumn();
    if (Number.isNaN(column)) context.moveTo(place, height);
    else context.lineTo(place, height);
    column = place;
    low = high = last = height;
  }
  endColumn();
}

export function strokeCurve(field: Field, curve: Curve, pen: Pen): void {
  take(field, pen);
  field.context.beginPath();
  trace(field, curve);
  field.context.stroke();
}

/** A polygon by its corners. */
export function fillPolygon(field: Field, corners: Curve, colour: string): void {
  const { context } = field;
  context.fillStyle = colour;
  context.beginPath();
  trace(field, corners);
  context.closePath();
  context.fill();
}

export function strokeVertical(field: Field, value: number, pen: Pen): void {
  const place = Math.round(across(field)(value)) + 0.5;
  take(field, pen);
  field.context.beginPath();
  field.context.moveTo(place, field.top);
  field.context.lineTo(place, field.top + field.height);
  field.context.stroke();
}

export function strokeHorizontal(field: Field, value: number, pen: Pen): void {
  const height = Math.round(up(field)(value)) + 0.5;
  take(field, pen);
  field.context.beginPath();
  field.context.moveTo(field.left, height);
  field.context.lineTo(field.left + field.width, height);
  field.context.stroke();
}

/** A line from zero to each sample, with a dot on it: filled, or a ring. */
export function strokeStems(field: Field, { x, y }: Curve, pen: Pen, isFilled: boolean): void {
  const { context, ratio } = field;
  const toX = across(field);
  const toY = up(field);
  const zero = toY(0);
  const radius = (isFilled ? 2 : 3) * ratio;
  take(field, pen);
  context.beginPath();
  x.forEach((time, index) => {
    const place = toX(time);
    const height = toY(y[index] ?? NaN);
    context.moveTo(place, zero);
    context.lineTo(place, height);
  });
  context.stroke();
  context.setLineDash([]);
  context.beginPath();
  x.forEach((time, index) => {
    const place = toX(time);
    const height = toY(y[index] ?? NaN);
    context.moveTo(place + radius, height);
    context.arc(place, height, radius, 0, 2 * Math.PI);
  });
  if (isFilled) {
    context.fillStyle = pen.colour;
    context.fill();
  } else context.stroke();
}

export type Shape = 'circle' | 'cross' | 'square' | 'plus' | 'diamond' | 'dot';

/** A mark at a place of the canvas. */
export function strokeShape(
  field: Field,
  shape: Shape,
  place: readonly [x: number, y: number],
  size: number,
  pen: Pen,
): void {
  const { context } = field;
  const [x, y] = place;
  const r = size * field.ratio;
  take(field, pen);
  context.beginPath();
  if (shape === 'circle' || shape === 'dot') context.arc(x, y, r, 0, 2 * Math.PI);
  else if (shape === 'square') context.rect(x - r, y - r, 2 * r, 2 * r);
  else if (shape === 'diamond') {
    context.moveTo(x, y - r);
    context.lineTo(x + r, y);
    context.lineTo(x, y + r);
    context.lineTo(x - r, y);
    context.closePath();
  } else if (shape === 'plus') {
    context.moveTo(x - r * 1.2, y);
    context.lineTo(x + r * 1.2, y);
    context.moveTo(x, y - r * 1.2);
    context.lineTo(x, y + r * 1.2);
  } else {
    context.moveTo(x - r, y - r);
    context.lineTo(x + r, y + r);
    context.moveTo(x - r, y + r);
    context.lineTo(x + r, y - r);
  }
  if (shape === 'dot') {
    context.fillStyle = pen.colour;
    context.fill();
  } else context.stroke();
}

/** A mark at values of the axes. */
export function strokeMark(field: Field, shape: Shape, x: number, y: number, pen: Pen): void {
  if (placeOf(field.x, x) < 0 || placeOf(field.x, x) > 1) return;
  strokeShape(field, shape, [across(field)(x), up(field)(y)], 3.5, pen);
}
