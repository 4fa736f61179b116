// Audio: a signal in a loop, the mixer on the audio thread, and a volume.

import { Signal } from '../state/signal.ts';
import { processorName, type Order, type Report, type Start } from './messages.ts';
import type { Choice } from './mixer.ts';
import type { Played } from './signal_choices.ts';
import type { Filter } from './voice.ts';

/** The code of the audio thread, which the page holds as a text. */
declare const LISTEN_CODE: string;

/** In seconds: a signal begins and ends, and the volume changes, without a click. */
const ramp = 0.03;

interface Chain {
  readonly source: AudioBufferSourceNode;
  readonly mixer: AudioWorkletNode;
  readonly gate: GainNode;
}

export class Player {
  /** What is heard, some times a second. */
  readonly reports = new Signal<Report | undefined>(undefined);
  readonly context: AudioContext;
  readonly #volume: GainNode;
  readonly #filters: { a: Filter | undefined; b: Filter | undefined } = {
    a: undefined,
    b: undefined,
  };
  #choice: Choice = 'off';
  #chain: Chain | undefined;

  private constructor(context: AudioContext) {
    this.context = context;
    this.#volume = new GainNode(context, { gain: 0 });
    this.#volume.connect(context.destination);
  }

  /** Raises an error where the browser has no audio. */
  static async open(): Promise<Player> {
    const context = new AudioContext();
    // From a file, audio worklets are loaded from data: addresses only.
    await context.audioWorklet.addModule(
      `data:text/javascript;charset=utf-8,${encodeURIComponent(LISTEN_CODE)}`,
    );
    return new Player(context);
  }

  /** Plays a signal in place of the one before. */
  play({ buffer }: Played): void {
    this.#end();
    const { context } = this;
    const channels = Math.min(2, buffer.numberOfChannels);
    const source = new AudioBufferSourceNode(context, { buffer, loop: true });
    const mixer = new AudioWorkletNode(context, processorName, {
      channelCount: channels,
      channelCountMode: 'explicit',
      outputChannelCount: [channels],
      processorOptions: { channels } satisfies Start,
    });
    mixer.port.addEventListener('message', ({ data }: MessageEvent<Report>) => {
      this.reports.set(data);
    });
    mixer.port.start();
    const gate = new GainNode(context, { gain: 0 });
    gate.gain.linearRampToValueAtTime(0, context.currentTime);
    gate.gain.linearRampToValueAtTime(1, context.currentTime + ramp);
    source.connect(mixer).connect(gate).connect(this.#volume);
    this.#chain = { source, mixer, gate };
    this.#order({ slot: 'a', filter: this.#filters.a });
    this.#order({ slot: 'b', filter: this.#filters.b });
    this.#order({ choose: this.#choice });
    source.start();
  }

  choose(choice: Choice): void {
    this.#choice = choice;
    this.#order({ choose: choice });
  }

  filter(slot: 'a' | 'b', filter: Filter | undefined): void {
    this.#filters[slot] = filter;
    this.#order({ slot, filter });
  }

  /** A ratio of amplitudes. */
  volume(gain: number): void {
    const { gain: parameter } = this.#volume;
    parameter.cancelScheduledValues(this.context.currentTime);
    parameter.setValueAtTime(parameter.value, this.context.currentTime);
    parameter.linearRampToValueAtTime(gain, this.context.currentTime + ramp);
  }

  async close(): Promise<void> {
    this.#end();
    await new Promise((ended) => setTimeout(ended, 2000 * ramp));
    await this.context.close();
  }

  #order(order: Order): void {
    this.#chain?.mixer.port.postMessage(order);
  }

  #end(): void {
    const chain = this.#chain;
    if (!chain) return;
    const { source, gate, mixer } = chain;
    const end = this.context.currentTime + ramp;
    gate.gain.cancelScheduledValues(0);
    gate.gain.setValueAtTime(gate.gain.value, this.context.currentTime);
    gate.gain.linearRampToValueAtTime(0, end);
    source.addEventListener('ended', () => {
      mixer.port.postMessage({ end: true } satisfies Order);
      mixer.disconnect();
      gate.disconnect();
    });
    source.stop(end);
    this.#chain = undefined;
  }
}
