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
  #last = 0;

  private constructor(worker: Worker) {
    this.#worker = worker;
    worker.addEventListener('message', ({ data }: MessageEvent<Answered>) => this.#take(data));
  }

  /** Starts a worker with a compiled module. */
  static start(module: WebAssembly.Module): Promise<Session> {
    const code = URL.createObjectURL(new Blob([WORKER_CODE], { type: 'text/javascript' }));
    const worker = new Worker(code);
    return new Promise((started, failed) => {
      worker.addEventListener('error', (event) => failed(new Error(event.message)), { once: true });
      worker.addEventListener(
        'message',
        () => {
          URL.revokeObjectURL(code);
          started(new Session(worker));
        },
        { once: true },
      );
      worker.postMessage({ module } satisfies Start);
    });
  }

  /** Rejects with Refused where the request was wrong. */
  ask<Name extends RequestName>(
    name: Name,
    request: Requests[Name]['takes'],
  ): Promise<Requests[Name]['answers']> {
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
