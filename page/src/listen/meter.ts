// How loud it is, and a light for what had to be limited.

import { element } from '../dom.ts';
import { strings } from '../strings.ts';
import type { Report } from './messages.ts';

const words = strings.listen;
const lowestDb = -80;
/** How much of each report goes into the level that is shown, which would flicker otherwise. */
const smoothing = 0.2;
/** How long the light stays on, in milliseconds. */
const lightTime = 1000;

function decibels(amplitude: number): number {
  return Math.max(lowestDb, 20 * Math.log10(amplitude));
}

export interface Meter {
  readonly element: HTMLElement;
  /** @param volume  what the report's levels are multiplied by */
  show(report: Report | undefined, volume: number): void;
}

export function meter(): Meter {
  const bar = element('meter', {
    min: String(lowestDb),
    max: '0',
    value: String(lowestDb),
    'aria-label': words.level,
  });
  const text = element('span', { class: 'listen-level' });
  const light = element('span', { class: 'listen-light', role: 'img' });
  let lit = 0;
  let power = 0;
  const shine = (on: boolean) => {
    light.classList.toggle('lit', on);
    light.textContent = on ? words.limited : '';
    light.setAttribute('aria-label', on ? words.limited : words.notLimited);
  };
  shine(false);
  return {
    element: element('div', { class: 'listen-meter' }, bar, text, light),
    show(report, volume) {
      if (!report) power = 0;
      else power += (report.power * volume ** 2 - power) * smoothing;
      const rms = report ? decibels(Math.sqrt(power)) : lowestDb;
      bar.value = rms;
      text.textContent = report
        ? words.levels(rms, decibels(report.peak * volume), lowestDb)
        : words.silence;
      const now = performance.now();
      if (report?.limited) lit = now;
      shine(report !== undefined && lit > 0 && now - lit < lightTime);
    },
  };
}
