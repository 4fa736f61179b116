// A burst of changes is one request: while an answer is awaited, only the newest request is kept.

import type { Session } from './client.ts';
import type { RequestName, Requests } from './protocol.ts';

export class Latest<Name extends RequestName> {
  readonly #session: Session;
  readonly #name: Name;
  readonly #show: (answer: Requests[Name]['answers'], request: Requests[Name]['takes']) => void;
  readonly #fail: (reason: Error) => void;
  #next: Requests[Name]['takes'] | undefined;
  #busy = false;

  constructor(
    session: Session,
    name: Name,
    show: (answer: Requests[Name]['answers'], request: Requests[Name]['takes']) => void,
    fail: (reason: Error) => void,
  ) {
    this.#session = session;
    this.#name = name;
    this.#show = show;
    this.#fail = fail;
  }

  /** Whether an answer is awaited. */
  get busy(): boolean {
    return this.#busy;
  }

  ask(request: Requests[Name]['takes']): void {
    this.#next = request;
    if (!this.#busy) void this.#run();
  }

  async #run(): Promise<void> {
    this.#busy = true;
    while (this.#next !== undefined) {
      const request = this.#next;
      this.#next = undefined;
      try {
        this.#show(await this.#session.ask(this.#name, request), request);
      } catch (reason) {
        this.#fail(reason instanceof Error ? reason : new Error(String(reason)));
      }
    }
    this.#busy = false;
  }
}
