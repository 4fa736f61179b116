// The frequencies that all panels show, which are a part of what the user has set.

import type { App } from '../app.ts';
import type { Axis, View } from '../session/protocol.ts';
import { isTooShort, panned, placeOf, within, zoomed, type Range } from './range.ts';

/** The highest frequency of the filters, in Hz. */
function highest(app: App): number {
  const shown = app.shown.value;
  return Math.max(shown?.design.samplerate ?? 0, shown?.other?.samplerate ?? 0) / 2;
}

/** What can be shown: a logarithmic range begins well below the lowest cutoff. */
function limits(app: App, logarithmic: boolean): Range {
  const high = highest(app);
  const cutoffs = app.shown.value?.panels.level?.cutoffs ?? [];
  const low = Math.min(high / 1200, ...cutoffs.map((cutoff) => cutoff / 100));
  return { low: logarithmic ? low : 0, high, logarithmic };
}

/** The range that the user chose. */
function chosen(view: View): Range | undefined {
  if (view.low === undefined || view.high === undefined) return undefined;
  return { low: view.low, high: view.high, logarithmic: view.scale !== 'linear' };
}

export function isZoomed(view: View): boolean {
  return chosen(view) !== undefined;
}

/** All frequencies again. */
export function showAll(app: App): void {
  const view: { -readonly [Key in keyof View]: View[Key] } = { ...app.store.state.value.view };
  delete view.low;
  delete view.high;
  app.store.change({ view });
}

/** Shows a range. @return false where that changes nothing. */
export function show(app: App, wanted: Range): boolean {
  const { view } = app.store.state.value;
  const logarithmic = view.scale !== 'linear';
  const all = limits(app, logarithmic);
  const range = within({ ...wanted, logarithmic }, all);
  if (isTooShort(range, all)) return false;
  if (range === all) {
    if (!isZoomed(view)) return false;
    showAll(app);
    return true;
  }
  if (view.low === range.low && view.high === range.high) return false;
  app.store.change({ view: { ...view, low: range.low, high: range.high } });
  return true;
}

/** What a gesture on a panel starts from: the chosen range, or else what the panel shows. */
export function startOf(app: App, panel: Axis): Range {
  return chosen(app.store.state.value.view) ?? panel;
}

/** Zooms about a frequency. @return false where that changes nothing. */
export function zoom(app: App, panel: Axis, factor: number, about: number): boolean {
  const start = startOf(app, panel);
  if (factor > 1 && !isZoomed(app.store.state.value.view)) return false;
  return show(app, zoomed(start, factor, Math.min(Math.max(placeOf(start, about), 0), 1)));
}

/** Pans by a part of what is shown. */
export function pan(app: App, panel: Axis, part: number): void {
  if (isZoomed(app.store.state.value.view)) show(app, panned(startOf(app, panel), part));
}

export function setScale(app: App, scale: 'linear' | 'logarithmic'): void {
  const view: { -readonly [Key in keyof View]: View[Key] } = {
    ...app.store.state.value.view,
    scale,
  };
  // A logarithmic range cannot begin with 0 Hz.
  if (scale === 'logarithmic' && view.low !== undefined) {
    const { low } = limits(app, true);
    view.low = Math.max(view.low, low);
    if (!(view.low < (view.high ?? 0))) {
      delete view.low;
      delete view.high;
    }
  }
  app.store.change({ view });
}
