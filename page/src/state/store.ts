// What the user has set: a filter, one to compare it with, and the frequencies that are shown.
// Everything else follows from it.

import type { Settings, Value, View } from '../session/protocol.ts';
import { Signal } from './signal.ts';

export interface State {
  /** Only what differs from a fresh box. */
  readonly settings: Settings;
  /** The filter that was pinned. */
  readonly other?: Settings;
  readonly view: View;
}

/** How long a pause ends a gesture, in milliseconds: a turn of a dial is one step to undo. */
const gesture = 600;

function same(a: State, b: State): boolean {
  return JSON.stringify(a) === JSON.stringify(b);
}

export class Store {
  readonly state: Signal<State>;
  /** How many changes were made. */
  readonly changes = new Signal(0);
  readonly #fresh: Settings;
  #past: State[] = [];
  #future: State[] = [];
  #settled: State;
  #timer: ReturnType<typeof setTimeout> | undefined;

  constructor(state: State, fresh: Settings) {
    this.#fresh = fresh;
    this.state = new Signal(state);
    this.#settled = state;
  }

  /** Sets one attribute. */
  set(name: string, values: readonly Value[]): void {
    this.merge({ [name]: values });
  }

  /** Sets several attributes and keeps the others. */
  merge(settings: Settings): void {
    this.replace({ ...this.state.value.settings, ...settings });
  }

  /** Sets these attributes, and all others as in a fresh box. */
  replace(settings: Settings): void {
    const changed = Object.entries(settings).filter(
      ([name, values]) => JSON.stringify(values) !== JSON.stringify(this.#fresh[name]),
    );
    this.change({ settings: Object.fromEntries(changed) });
  }

  change(part: Partial<State>): void {
    this.open({ ...this.state.value, ...part });
  }

  /** Takes all of a state, as from an address. */
  open(state: State): void {
    this.changes.set(this.changes.value + 1);
    this.#future = [];
    this.#show(state);
    clearTimeout(this.#timer);
    this.#timer = setTimeout(() => this.settle(), gesture);
  }

  /** Ends a gesture: what comes next is another step. */
  settle(): void {
    clearTimeout(this.#timer);
    const { value } = this.state;
    if (same(value, this.#settled)) return;
    this.#past.push(this.#settled);
    this.#settled = value;
    this.state.set(value);
  }

  get canUndo(): boolean {
    return this.#past.length > 0 || !same(this.state.value, this.#settled);
  }

  get canRedo(): boolean {
    return this.#future.length > 0;
  }

  undo(): void {
    this.settle();
    const before = this.#past.pop();
    if (!before) return;
    this.#future.push(this.#settled);
    this.#settled = before;
    this.#show(before);
  }

  redo(): void {
    const after = this.#future.pop();
    if (!after) return;
    this.#past.push(this.#settled);
    this.#settled = after;
    this.#show(after);
  }

  #show(state: State): void {
    this.state.set(state);
  }
}
