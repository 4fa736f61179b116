// What a filter has to do: edges of its bands, ripple and attenuation.

import type { EstimateRequest } from '../session/protocol.ts';

export const responses = ['lowpass', 'highpass', 'bandpass', 'bandstop'] as const;

export type Response = (typeof responses)[number];

export type Band = 'passband' | 'stopband';

export interface Demand extends Omit<EstimateRequest, 'samplerate'> {
  readonly response: Response;
}

export interface Edge {
  readonly band: Band;
  readonly index: number;
}

const edge = (band: Band, index: number): Edge => ({ band, index });

/** The edges as they follow each other along the axis. */
const ascending: Readonly<Record<Response, readonly Edge[]>> = {
  lowpass: [edge('passband', 0), edge('stopband', 0)],
  highpass: [edge('stopband', 0), edge('passband', 0)],
  bandpass: [edge('stopband', 0), edge('passband', 0), edge('passband', 1), edge('stopband', 1)],
  bandstop: [edge('passband', 0), edge('stopband', 0), edge('stopband', 1), edge('passband', 1)],
};

export function edgesOf({ response }: Demand): readonly Edge[] {
  return ascending[response];
}

export function frequencyOf(demand: Demand, { band, index }: Edge): number {
  return demand[band][index] ?? NaN;
}

export function isResponse(word: unknown): word is Response {
  return (responses as readonly unknown[]).includes(word);
}

/** As a ratio, what is left between two edges. */
const apart = 1.002;

/** A demand with one edge elsewhere, but between its neighbours. */
export function withEdge(demand: Demand, moved: Edge, hertz: number, nyquist: number): Demand {
  const edges = edgesOf(demand);
  const place = edges.findIndex(({ band, index }) => band === moved.band && index === moved.index);
  const below = edges[place - 1];
  const above = edges[place + 1];
  const low = (below ? frequencyOf(demand, below) : nyquist * 1e-5) * apart;
  const high = (above ? frequencyOf(demand, above) : nyquist) / apart;
  if (!Number.isFinite(hertz) || low > high) return demand;
  const limited = Math.min(Math.max(hertz, low), high);
  const band = demand[moved.band].map((old, index) => (index === moved.index ? limited : old));
  return { ...demand, [moved.band]: band };
}

/** The same levels for another response, with its edges about the same frequencies. */
export function withResponse(demand: Demand, response: Response, nyquist: number): Demand {
  const all = [...demand.passband, ...demand.stopband];
  const low = Math.min(...all);
  const high = Math.max(...all);
  return { ...demand, response, ...usualEdges(response, [low, high], nyquist) };
}

/** Edges about one cutoff or two. */
export function usualEdges(
  response: Response,
  cutoffs: readonly number[],
  nyquist: number,
): Pick<Demand, 'passband' | 'stopband'> {
  const isBand = ascending[response].length === 4;
  const first = Math.min(...cutoffs);
  const last = Math.max(...cutoffs);
  // Halfway to half the rate on a logarithmic axis, but no farther than an octave.
  const above = (hertz: number) => Math.min(2 * hertz, Math.sqrt(hertz * nyquist));
  if (!isBand) {
    const lower = first;
    const upper = last > first ? Math.min(last, nyquist / apart) : above(first);
    return response === 'lowpass'
      ? { passband: [lower], stopband: [upper] }
      : { passband: [upper], stopband: [lower] };
  }
  const inner = [first, last > first ? last : above(first)];
  const [from = first, to = last] = inner;
  const outer = [from / 2, above(to)];
  return response === 'bandpass'
    ? { passband: inner, stopband: outer }
    : { passband: outer, stopband: inner };
}

export type Span = readonly [from: number, to: number];

/** The parts of the axis that are of a band. */
export function spansOf(demand: Demand, band: Band, low: number, high: number): readonly Span[] {
  const edges = edgesOf(demand);
  const spans: Span[] = [];
  let from = low;
  edges.forEach((place, index) => {
    const here = frequencyOf(demand, place);
    const before = edges[index - 1];
    // A band ends at this edge if it did not begin at it.
    if (place.band === band && (!before || before.band === band)) spans.push([from, here]);
    from = here;
  });
  if (edges.at(-1)?.band === band) spans.push([from, high]);
  return spans;
}
