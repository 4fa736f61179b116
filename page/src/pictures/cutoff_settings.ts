// The attribute "frequency" in Hz.

import type { App } from '../app.ts';
import type { Design, Settings, Value } from '../session/protocol.ts';

function word(settings: Settings, name: string): string {
  return String(settings[name]?.[0] ?? '');
}

/** How many cutoffs the response takes. */
export function cutoffCount(settings: Settings): number {
  return word(settings, 'response').startsWith('band') ? 2 : 1;
}

/** Whether the frequencies below a cutoff are those that are stopped. */
export function isStoppedBelow(settings: Settings, index: number): boolean {
  const response = word(settings, 'response');
  return response === 'highpass' || response === (index === 0 ? 'bandpass' : 'bandstop');
}

/** How many Hz a unit of the cutoffs is; undefined for units that are not known here. */
function unitInHertz(design: Design): number | undefined {
  const units = word(design.settings, 'units');
  if (units === 'hertz') return 1;
  if (units === 'normalized') return design.samplerate / 2;
  return undefined;
}

/** The cutoffs in Hz, as many as the response takes, in the order of the attribute. */
export function cutoffsOf(design: Design): number[] {
  const unit = unitInHertz(design);
  if (unit === undefined) return [];
  return (design.settings['frequency'] ?? [])
    .slice(0, cutoffCount(design.settings))
    .map((value) => Number(value) * unit);
}

/** Sets one cutoff, and keeps the other. @param digits  how many count */
export function setCutoff(app: App, index: number, hertz: number, digits: number): void {
  const design = app.shown.value?.design;
  const unit = design && unitInHertz(design);
  if (!design || unit === undefined) return;
  const values: Value[] = [...(app.settings()['frequency'] ?? [])];
  values[index] = Number((hertz / unit).toPrecision(digits));
  app.store.set('frequency', values);
}
