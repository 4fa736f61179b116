// Pictures in words, for those who do not see them.

import type {
  Curve,
  LiveAnswer,
  ResponsePanel,
  RootPanel,
  TimePanel,
} from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { frequencyText, significant, unitOf, valueText } from './quantities.ts';
import { extremesOn, valueOn } from './reading.ts';

type Limit = NonNullable<ResponsePanel['mask']>[number];

const words = strings.pictures.words;

function ends({ x }: Curve): readonly [number, number] {
  return [x[0] ?? NaN, x.at(-1) ?? NaN];
}

/** A limit is a rectangle from the end of the axis to the level that was asked for. */
function sidesOf({ polygon: { x, y } }: Limit) {
  const [end = NaN, asked = NaN] = y;
  return { from: x[1] ?? NaN, to: x[2] ?? NaN, asked, isFloor: end < asked };
}

/** What the curve comes to along a limit, and what was asked for. */
function reachedAlong(curve: Curve, limit: Limit) {
  const sides = sidesOf(limit);
  const extremes = extremesOn(curve, sides.from, sides.to);
  const reached = sides.isFloor ? extremes?.lowest : extremes?.highest;
  return { ...sides, reached: reached ?? NaN };
}

/** A sentence for each value that was asked for: what it was, and what was reached. */
export function limitsReached(panel: ResponsePanel): string[] {
  const [curve] = panel.curves;
  if (!curve) return [];
  const unit = unitOf(panel.y.label);
  const sentences = (panel.mask ?? []).map((limit) => {
    const { asked, reached } = reachedAlong(curve, limit);
    return words.askedAndReached(`${significant(asked, 4)} ${unit}`, valueText(reached, unit));
  });
  return [...new Set(sentences)];
}

function levelsAt(curve: Curve, panel: ResponsePanel): string[] {
  const unit = unitOf(panel.y.label);
  const [from, to] = ends(curve);
  if (Number.isNaN(from)) return [];
  const text = (at: number) =>
    words.valueAt(valueText(valueOn(curve, at), unit), frequencyText(at));
  return [text(from), text(to)];
}

function marksOf(panel: ResponsePanel, index: number): string[] {
  const marks = panel.marks[index];
  if (!marks) return [];
  return [...marks.x].map((x, mark) =>
    words.valueAt(valueText(marks.y[mark] ?? NaN, unitOf(panel.y.label)), frequencyText(x)),
  );
}

function limitWords(panel: ResponsePanel): string[] {
  const [curve] = panel.curves;
  if (!curve) return [];
  const unit = unitOf(panel.y.label);
  return (panel.mask ?? []).map((limit) => {
    const { from, to, reached, isFloor } = reachedAlong(curve, limit);
    const span = words.between(frequencyText(from), frequencyText(to));
    const value = valueText(reached, unit);
    return isFloor ? words.atLeast(value, span) : words.atMost(value, span);
  });
}

function highestWords(curve: Curve, panel: ResponsePanel): string[] {
  const [from, to] = ends(curve);
  const extremes = extremesOn(curve, from, to);
  if (!extremes) return [];
  const value = valueText(extremes.highest, unitOf(panel.y.label));
  return [words.highest(value, frequencyText(extremes.at))];
}

/** "level in dB: 0.000 dB at 20 Hz, ..." */
export function frequencyWords(panel: ResponsePanel, answer: LiveAnswer): string {
  const filters = panel.curves.slice(0, answer.other ? 2 : 1).map((curve, index) => {
    const parts = [
      ...levelsAt(curve, panel),
      ...marksOf(panel, index),
      ...highestWords(curve, panel),
      ...(index === 0 ? limitWords(panel) : []),
    ];
    const name = answer.other && panel.curves.length === 2 ? `${'AB'[index]}: ` : '';
    return name + parts.join(', ');
  });
  return `${panel.title}, ${panel.y.label}: ${filters.join('; ')}`;
}

export interface Root {
  readonly radius: number;
  /** In Hz. */
  readonly frequency: number;
}

export function rootAt(x: number, y: number, samplerate: number): Root {
  const frequency = (Math.abs(Math.atan2(y, x)) / (2 * Math.PI)) * samplerate;
  return { radius: Math.hypot(x, y), frequency };
}

/** Radii near 1 by what is missing, which is what tells them apart. */
export function radiusText(radius: number): string {
  const rest = 1 - radius;
  if (Math.abs(rest) < 1e-9) return '1';
  if (Math.abs(rest) < 1e-3)
    return `1 ${rest > 0 ? '−' : '+'} ${Math.abs(rest).toExponential(2).replace('e-', 'e−')}`;
  return significant(radius, 5);
}

function farthest(roots: Curve, { origin: [real, imaginary], unit }: RootPanel): number {
  let largest = 0;
  roots.x.forEach((x, index) => {
    const y = roots.y[index] ?? NaN;
    largest = Math.max(largest, Math.hypot(real + x / unit, imaginary + y / unit));
  });
  return largest;
}

export function rootWords(panel: RootPanel): string {
  const filters = panel.filters.map(({ zeros, poles }, index) => {
    const name = panel.filters.length > 1 ? `${'AB'[index]}: ` : '';
    const text = words.roots(zeros.x.length, poles.x.length);
    return `${name}${text}${poles.x.length ? `, ${words.farthest(radiusText(farthest(poles, panel)))}` : ''}`;
  });
  return `${panel.title}: ${filters.join('; ')}`;
}

export function timeWords(panel: TimePanel): string {
  const filters = panel.curves.map((curve, index) => {
    const name = panel.curves.length > 1 ? `${'AB'[index]}: ` : '';
    const [from, to] = ends(curve);
    const extremes = extremesOn(curve, from, to);
    if (!extremes) return `${name}${words.nothing}`;
    const value = significant(extremes.highest, 4);
    const at = `${significant(extremes.at, 4)} ${unitOf(panel.x.label)}`;
    const end = `${significant(to, 4)} ${unitOf(panel.x.label)}`;
    const last = significant(curve.y.at(-1) ?? NaN, 4);
    return `${name}${words.highest(value, at)}, ${words.valueAt(last, end)}`;
  });
  return `${panel.title}: ${filters.join('; ')}`;
}
