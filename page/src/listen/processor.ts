// The mixer on the audio thread.

import { processorName, type Order, type Start } from './messages.ts';
import { Mixer } from './mixer.ts';

declare class AudioWorkletProcessor {
  readonly port: MessagePort;
}
declare function registerProcessor(
  name: string,
  processor: new (options: { processorOptions: Start }) => AudioWorkletProcessor & {
    process(inputs: Float32Array[][], outputs: Float32Array[][]): boolean;
  },
): void;
declare const sampleRate: number;

/** How often the page is told what was heard. */
const reportsPerSecond = 30;

class Processor extends AudioWorkletProcessor {
  readonly #mixer: Mixer;
  readonly #channels: number;
  #blocks: Float64Array[] = [];
  #sinceReport = 0;
  #ended = false;

  constructor({ processorOptions }: { processorOptions: Start }) {
    super();
    this.#channels = processorOptions.channels;
    this.#mixer = new Mixer(this.#channels, sampleRate);
    this.port.addEventListener('message', ({ data }: MessageEvent<Order>) => {
      if ('end' in data) this.#ended = true;
      else if ('choose' in data) this.#mixer.choose(data.choose);
      else this.#mixer.set(data.slot, data.filter);
    });
    this.port.start();
  }

  process([input = []]: Float32Array[][], [output = []]: Float32Array[][]): boolean {
    const length = output[0]?.length ?? 0;
    if (this.#blocks[0]?.length !== length)
      this.#blocks = Array.from({ length: this.#channels }, () => new Float64Array(length));
    this.#blocks.forEach((block, channel) => {
      const samples = input[channel] ?? input[0];
      if (samples) block.set(samples);
      else block.fill(0);
    });
    this.#mixer.run(this.#blocks);
    output.forEach((samples, channel) => samples.set(this.#blocks[channel] ?? this.#blocks[0]!));
    this.#sinceReport += length;
    if (this.#sinceReport >= sampleRate / reportsPerSecond) {
      this.#sinceReport = 0;
      this.port.postMessage(this.#mixer.report());
    }
    return !this.#ended;
  }
}

registerProcessor(processorName, Processor);
