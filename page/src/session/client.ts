// A session in a worker of its own: requests are answered in their order.

import type { Answered, Asked, Start } from './messages.ts';
import { withNumbers } from './numbers.ts';
import { Refused, type RequestName, type Requests } from './protocol.ts';

interface Waiting {
  readonly answer: (value: never) => void;
  readonly refuse: (reason: Error) => void;
}

/** The code of the worker, which the page holds as a text. */
declare const WORKER_CODE: string;

export class Session {
  readonly #worker: Worker;
  readonly #waiting = new Map<number, Waiting>();
  /** Rejects where the worker cannot work. */
  readonly started: Promise<void>;
  #last = 0;

  /** @param module  compiled */
  constructor(module: WebAssembly.Module) {
    const code = URL.createObjectURL(new Blob([WORKER_CODE], { type: 'text/javascript' }));
    this.#worker = new Worker(code);
    this.started = new Promise((started, failed) => {
      this.#worker.addEventListener('error', (event) => failed(new Error(event.message)), {
        once: true,
      });
      this.#worker.addEventListener(
        'message',
        () => {
          URL.revokeObjectURL(code);
          this.#worker.addEventListener('message', ({ data }: MessageEvent<Answered>) =>
            this.#take(data),
          );
          started();
        },
        { once: true },
      );
    });
    this.#worker.postMessage({ module } satisfies Start);
  }

  /** Rejects with Refused where the request was wrong. */
  async ask<Name extends RequestName>(
    name: Name,
    request: Requests[Name]['takes'],
  ): Promise<Requests[Name]['answers']> {
    await this.started;
    const number = ++this.#last;
    return new Promise((answer, refuse) => {
      this.#waiting.set(number, { answer, refuse });
      this.#worker.postMessage({
        number,
        request: JSON.stringify({ do: name, ...request }),
      } satisfies Asked);
    });
  }

  #take({ number, answer }: Answered): void {
    const waiting = this.#waiting.get(number);
    if (!waiting) return;
    this.#waiting.delete(number);
    const document = JSON.parse(answer.document) as { refused?: string; failed?: string };
    if (document.refused !== undefined) waiting.refuse(new Refused(document.refused));
    else if (document.failed !== undefined) waiting.refuse(new Error(document.failed));
    else waiting.answer(withNumbers(document, answer.numbers) as never);
  }
}
