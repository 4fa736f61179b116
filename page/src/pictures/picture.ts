// What all panels have in common.

import type { App } from '../app.ts';
import type { LiveAnswer } from '../session/protocol.ts';
import type { Signal } from '../state/signal.ts';
import type { Crosshair } from './crosshair.ts';
import type { Colours } from './theme.ts';

/** What the panels share. */
export interface Room {
  readonly app: App;
  readonly crosshair: Crosshair;
  readonly colours: Signal<Colours>;
}

/** The inside of a panel. */
export interface Picture {
  readonly element: HTMLElement;
  /** Draws an answer, if it has this panel. */
  draw(answer: LiveAnswer): void;
  /** Takes a size in pixels of the page. */
  resize(width: number, height: number): void;
  /** The same again in other colours. */
  redraw(): void;
  /** Says in words what it shows of an answer, if that has this panel. */
  describe(answer: LiveAnswer): void;
  /** What stands in the panel's head. */
  head(answer: LiveAnswer): { readonly title: string; readonly note: string };
}

/** The strokes of A and of B: they differ in black and white, too. */
export function penOf(colours: Colours, filter: number) {
  return filter === 0
    ? { colour: colours.a, width: 1.75 }
    : { colour: colours.b, width: 1.75, dash: [6, 4] };
}
