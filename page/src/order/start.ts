// The demand that a filter meets: what it lets pass and what it stops, read from its level.

import { cutoffsOf } from '../pictures/cutoff_settings.ts';
import type { Curve, Design } from '../session/protocol.ts';
import { edgesOf, isResponse, usualEdges, type Demand, type Edge } from './demand.ts';

/** What a family that asks for neither is asked to do. */
const usual = { ripple: 1, attenuation: 60, halfPower: 3.01 };

function numberOf(design: Design, name: string): number | undefined {
  if (design.out_of_use.includes(name)) return undefined;
  return Number(design.settings[name]?.[0]);
}

function rippleOf(design: Design): number {
  const asked = numberOf(design, 'passband_ripple');
  if (asked !== undefined) return asked;
  return design.settings['topology']?.[0] === 'butterworth' ? usual.halfPower : usual.ripple;
}

type Run = readonly [from: number, to: number];

const nowhere: Run = [NaN, NaN];

/** The parts of x between points whose levels all pass. */
function runs(curve: Curve, passes: (level: number) => boolean): Run[] {
  const found: Run[] = [];
  let from: number | undefined;
  let to = NaN;
  curve.x.forEach((x, index) => {
    if (passes(curve.y[index] ?? NaN)) {
      from ??= x;
      to = x;
    } else if (from !== undefined) {
      found.push([from, to]);
      from = undefined;
    }
  });
  if (from !== undefined) found.push([from, to]);
  return found;
}

/** The edges of the bands that a response has: those within the ripple, and those of the
 *  attenuation. */
function edgesIn(curve: Curve, demand: Omit<Demand, 'passband' | 'stopband'>, cutoffs: number[]) {
  // Ripples touch their limits, give or take a rounding.
  const tolerance = 1e-6;
  const passed = runs(curve, (level) => level >= -demand.ripple - tolerance);
  // Where the curve is interrupted, at a zero, nothing passes.
  const stopped = runs(curve, (level) => !(level > -demand.attenuation + tolerance));
  const centre = Math.sqrt((cutoffs[0] ?? NaN) * (cutoffs[1] ?? NaN));
  const about = (found: Run[]) =>
    found.find(([from, to]) => from <= centre && centre <= to) ?? nowhere;
  const first = (found: Run[]) => (found[0] ?? nowhere)[1];
  const last = (found: Run[]) => (found.at(-1) ?? nowhere)[0];
  switch (demand.response) {
    case 'lowpass':
      return { passband: [first(passed)], stopband: [last(stopped)] };
    case 'highpass':
      return { passband: [last(passed)], stopband: [first(stopped)] };
    case 'bandpass':
      return { passband: about(passed), stopband: [first(stopped), last(stopped)] };
    case 'bandstop':
      return { passband: [first(passed), last(passed)], stopband: about(stopped) };
  }
}

/** To four digits, away from the neighbour of the other band, which makes nothing harder. */
function rounded(demand: Demand): Demand {
  const edges = edgesOf(demand);
  const round = ({ band, index }: Edge, hertz: number) => {
    const place = edges.findIndex((edge) => edge.band === band && edge.index === index);
    const isDown = edges[place + 1] !== undefined && edges[place + 1]?.band !== band;
    const step = 10 ** (Math.floor(Math.log10(hertz)) - 3);
    const steps = hertz / step;
    const whole = isDown ? Math.floor(steps + 1e-9) : Math.ceil(steps - 1e-9);
    return Number((whole * step).toPrecision(4));
  };
  return {
    ...demand,
    passband: demand.passband.map((hertz, index) => round({ band: 'passband', index }, hertz)),
    stopband: demand.stopband.map((hertz, index) => round({ band: 'stopband', index }, hertz)),
  };
}

function isAscending(demand: Demand, nyquist: number): boolean {
  const list = [
    0,
    ...edgesOf(demand).map(({ band, index }) => demand[band][index] ?? NaN),
    nyquist,
  ];
  return list.every((hertz, index) => index === 0 || hertz > (list[index - 1] ?? NaN));
}

/** @param curve  the level in dB over all frequencies in Hz */
export function demandOf(design: Design, curve: Curve): Demand {
  const word = design.settings['response']?.[0];
  const response = isResponse(word) ? word : 'lowpass';
  const levels = {
    response,
    ripple: rippleOf(design),
    attenuation: numberOf(design, 'stopband_attenuation') ?? usual.attenuation,
  };
  const cutoffs = cutoffsOf(design);
  const nyquist = design.samplerate / 2;
  const found = rounded({ ...levels, ...edgesIn(curve, levels, cutoffs) });
  if (isAscending(found, nyquist)) return found;
  // A filter that never comes to its stopband says only where its cutoffs are.
  return rounded({ ...levels, ...usualEdges(response, cutoffs, nyquist) });
}
