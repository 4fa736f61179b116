// What every part of the page works with.

import type { Session } from './session/client.ts';
import type { Description, LiveAnswer, PanelName, Settings } from './session/protocol.ts';
import type { Signal } from './state/signal.ts';
import type { Store } from './state/store.ts';

/** The page in numbers. */
export interface Counts {
  readonly changes: number;
  readonly designs: number;
  /** Of the last design with its curves, in the session. */
  readonly microseconds: number;
}

/** An answer with the settings that were asked for. */
export interface Shown extends LiveAnswer {
  readonly asked: Settings;
}

export interface Headline {
  readonly kind: 'pending' | 'sound' | 'problem';
  readonly text: string;
}

export interface App {
  readonly description: Description;
  /** Designs and curves, which are wanted at once. */
  readonly live: Session;
  /** What is asked for now and then: layouts, estimates, files. */
  readonly patient: Session;
  /** Verdicts, which follow the filter, and take longest of all. */
  readonly judge: Session;
  readonly store: Store;
  /** What was designed last; undefined before the first time. */
  readonly shown: Signal<Shown | undefined>;
  /** Why the settings were refused; empty if they were not. */
  readonly refusal: Signal<string>;
  /** The verdict in a word or two. */
  readonly headline: Signal<Headline>;
  /** What the user should know of an address or a file; stays until it is dismissed. */
  readonly notice: Signal<string>;
  /** The panels that are in sight. */
  readonly panels: Signal<readonly PanelName[]>;
  /** The rate of audio that is switched on, in Hz. */
  readonly audioRate: Signal<number | undefined>;
  readonly counts: Signal<Counts>;
  /** Says something to everybody, screen readers included. */
  announce(sentence: string): void;
  /** All attributes as they are set. */
  settings(): Settings;
}
