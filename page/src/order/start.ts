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

/** The parts of x in which the curve has only levels that pass. */
function runs(curve: Curve, passes: (level: number) => boolean): [from: number, to: number][] {
  const found: [number, number][] = [];
  let isRunning = false;
  curve.x.forEach((x, index) => {
    const isOne = passes(curve.y[index] ?? NaN);
    const last = found.at(-1);
    if (isOne && isRunning && last) last[1] = x;
    else if (isOne) found.push([x, x]);
    isRunning = isOne;
  });
  return found;
}

/** The edges of the band in a response: passbands run from one point to the next above the ripple;
 *  a stopband is all that lies between the first and the last point where the level is low enough
 *  for good. */
function edgesIn(curve: Curve, demand: Omit<Demand, 'passband' | 'stopband'>, cutoffs: number[]) {
  const tolerance = 0.005;
  const isPassed = (level: number) => level >= -demand.ripple - tolerance;
  const isLoud = (level: number) => level > -demand.attenuation + tolerance;
  const passed = runs(curve, isPassed);
  const loud = runs(curve, isLoud);
  const [first = NaN] = passed.map(([, to]) => to);
  const last = passed.at(-1)?.[0] ?? NaN;
  const centre = Math.sqrt((cutoffs[0] ?? NaN) * (cutoffs[1] ?? NaN));
  switch (demand.response) {
    case 'lowpass':
      return { passband: [first], stopband: [loud.at(-1)?.[1] ?? NaN] };
    case 'highpass':
      return { passband: [last], stopband: [loud[0]?.[0] ?? NaN] };
    case 'bandpass': {
      const band = passed.find(([from, to]) => from <= centre && centre <= to) ?? [NaN, NaN];
      return { passband: band, stopband: [loud[0]?.[0] ?? NaN, loud.at(-1)?.[1] ?? NaN] };
    }
    case 'bandstop': {
      const below = loud.filter(([from]) => from < centre).at(-1)?.[1] ?? NaN;
      const above = loud.find(([, to]) => to > centre)?.[0] ?? NaN;
      return { passband: [first, last], stopband: [below, above] };
    }
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
