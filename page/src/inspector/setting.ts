// Sets an attribute, and with it what has to change at once.

import type { App } from '../app.ts';
import type { Settings, Value } from '../session/protocol.ts';

const bands: readonly Value[] = ['bandpass', 'bandstop'];

/** The highest cutoff that a new band gets, where 1 is half the sample rate. */
const highest = 0.9;

function numbers(values: readonly Value[] | undefined): number[] {
  return (values ?? []).map(Number);
}

/**
 * A band with one cutoff is refused, and a second one is of no use elsewhere. What a fresh box has
 * is left to the box. A new band begins at the cutoff that is set and goes up an octave.
 */
function cutoffsFor(app: App, response: Value): Settings {
  const set = numbers(app.store.state.value.settings.frequency);
  const [lower] = set;
  if (lower === undefined) return {};
  if (!bands.includes(response)) return { frequency: [lower] };
  if (set.length === 2) return {};
  const inHertz = app.settings().units?.[0] === 'hertz';
  const samplerate = app.shown.value?.design.samplerate;
  const top = highest * (inHertz && samplerate !== undefined ? samplerate / 2 : 1);
  const edges = [lower, Math.min(2 * lower, top)];
  return { frequency: edges[1]! > lower ? edges : [lower / 2, lower] };
}

/** A change that goes on, as while a slider is dragged. */
export function setAttribute(app: App, name: string, values: readonly Value[]): void {
  const [response] = name === 'response' ? values : [];
  app.store.merge({
    ...(response !== undefined && cutoffsFor(app, response)),
    [name]: values,
  });
}

/** A change that is a step of its own to undo. */
export function setAtOnce(app: App, name: string, values: readonly Value[]): void {
  app.store.settle();
  setAttribute(app, name, values);
  app.store.settle();
}
