// Hearing the filter: a signal through the published sections, at the rate of the audio.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { strings } from '../strings.ts';
import { decoded } from './audio_file.ts';
import { controls, type Controls } from './controls.ts';
import { heardFilter, publishedSections } from './filters.ts';
import { Player } from './player.ts';
import { fileSignal, madeSignal, type Played } from './signal_choices.ts';
import { toggleOnSpace } from './space_key.ts';
import type { Filter } from './voice.ts';

const words = strings.listen;

export function listen(app: App): HTMLElement {
  return new Listening(app).element;
}

class Listening {
  readonly element: HTMLElement;
  readonly #app: App;
  readonly #controls: Controls;
  readonly #rate = element('p', { class: 'listen-note' });
  readonly #state = element('p', { class: 'listen-note', role: 'status' });
  readonly #fault = element('p', { class: 'listen-fault', role: 'alert' });
  #player: Player | undefined;
  #played: Played | undefined;
  #file: File | undefined;
  #ranAway = false;
  #busy = false;
  readonly #heard: Record<'a' | 'b', Filter | undefined> = { a: undefined, b: undefined };

  constructor(app: App) {
    this.#app = app;
    this.#controls = controls({
      toggle: () => void this.#toggle(),
      choose: (choice) => {
        this.#player?.choose(choice);
        this.#say();
      },
      match: () => this.#setFilters(),
      volume: (gain) => this.#player?.volume(gain),
      signal: () => void this.#changeSignal(),
      file: (file) => {
        this.#file = file;
        void this.#changeSignal();
      },
    });
    this.element = element(
      'section',
      { class: 'listen', 'aria-label': words.heading },
      this.#controls.element,
      this.#fault,
      this.#state,
      this.#rate,
    );
    app.shown.follow(() => this.#setFilters());
    app.store.state.follow(({ other }) => this.#controls.offerB(other !== undefined));
    toggleOnSpace(() => void this.#toggle());
  }

  async #toggle(): Promise<void> {
    if (this.#busy) return;
    this.#busy = true;
    try {
      await (this.#player ? this.#stop() : this.#start());
    } catch (reason) {
      this.#fail(reason);
    }
    this.#busy = false;
    this.#controls.showPlaying(this.#player !== undefined);
    this.#say();
  }

  async #start(): Promise<void> {
    this.#fault.textContent = '';
    const player = await Player.open();
    this.#player = player;
    player.reports.follow((report) => {
      this.#controls.meter.show(report, this.#controls.volume());
      if (report?.ranAway !== this.#ranAway) {
        this.#ranAway = report?.ranAway ?? false;
        this.#say();
      }
    });
    player.choose(this.#controls.choice());
    player.volume(this.#controls.volume());
    await this.#changeSignal();
    this.#app.audioRate.set(player.context.sampleRate);
    this.#setFilters();
  }

  async #stop(): Promise<void> {
    const player = this.#player;
    this.#player = undefined;
    this.#played = undefined;
    this.#ranAway = false;
    this.#controls.meter.show(undefined, 0);
    this.#app.audioRate.set(undefined);
    await player?.close();
  }

  async #changeSignal(): Promise<void> {
    const player = this.#player;
    const name = this.#controls.signal();
    this.#fault.textContent = '';
    if (!player) return;
    const { context } = player;
    try {
      let played: Played;
      if (name !== 'file') played = madeSignal(name, context.sampleRate);
      else if (this.#file) played = fileSignal(await decoded(this.#file, context));
      else return;
      if (player !== this.#player) return;
      this.#played = played;
      player.play(played);
      this.#setFilters();
    } catch (reason) {
      this.#fail(reason);
    }
  }

  #setFilters(): void {
    const player = this.#player;
    const shown = this.#app.shown.value;
    if (!player || !shown) return;
    const rate = player.context.sampleRate;
    const spectrum = this.#controls.matched() ? this.#played?.spectrum : undefined;
    for (const [slot, design] of [
      ['a', shown.design],
      ['b', shown.other],
    ] as const) {
      const sections = design && publishedSections(design);
      this.#heard[slot] = sections && heardFilter(sections, spectrum, rate);
      player.filter(slot, this.#heard[slot]);
    }
    this.#say();
  }

  #fail(reason: unknown): void {
    this.#fault.textContent = reason instanceof Error ? reason.message : String(reason);
  }

  // What one should know of what is heard.
  #say(): void {
    this.#state.textContent = this.#sentence();
    this.#rate.replaceChildren(...this.#rateSentence());
  }

  #sentence(): string {
    const choice = this.#controls.choice();
    if (!this.#player || !this.#app.shown.value || choice === 'off') return '';
    const heard = this.#heard[choice];
    if (!heard) return words.noSections;
    if (this.#ranAway) return words.ranAway;
    return this.#controls.matched() ? words.matched(choice, 20 * Math.log10(heard.gain)) : '';
  }

  #rateSentence(): (string | Node)[] {
    const design = this.#app.shown.value?.design;
    const rate = this.#player?.context.sampleRate;
    if (!design || rate === undefined || this.#app.audioRate.value !== rate) return [];
    if (design.samplerate === rate) return [words.rate(rate)];
    // Where the settings give no rate, the design for the audio's is on its way.
    const given = design.settings.samplerate?.[0];
    if (typeof given !== 'number' || given < 1) return [];
    const follow = element('button', { type: 'button' }, words.follow(rate));
    follow.addEventListener('click', () => this.#app.store.set('samplerate', [0]));
    return [words.otherRate(design.samplerate, rate), ' ', follow];
  }
}
