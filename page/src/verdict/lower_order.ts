// The order that a filter has to come down to. The search takes several verdicts, so that it waits
// for a pause.

import type { App } from '../app.ts';
import type { Requests, Settings, Verdict } from '../session/protocol.ts';
import { Latest } from '../session/latest.ts';

/** In milliseconds. */
const pause = 500;

type Request = Requests['lower_order']['takes'];

export class LowerOrder {
  readonly #latest: Latest<'lower_order'>;
  #timer: ReturnType<typeof setTimeout> | undefined;
  #wanted: Request | undefined;
  #show: (remedy: Settings) => void = () => undefined;

  constructor(app: App) {
    this.#latest = new Latest(
      app.judge,
      'lower_order',
      ({ order }, request) => {
        if (order !== null && request === this.#wanted) this.#show({ order: [order] });
      },
      // The words of the finding remain.
      () => undefined,
    );
  }

  /** Calls with the remedy if a verdict wants one and there is one. */
  look(verdict: Verdict, request: Request, show: (remedy: Settings) => void): void {
    this.stop();
    if (!verdict.findings.some((finding) => finding.lower_order)) return;
    this.#wanted = request;
    this.#show = show;
    this.#timer = setTimeout(() => this.#latest.ask(request), pause);
  }

  /** What is found from now on is for another filter. */
  stop(): void {
    clearTimeout(this.#timer);
    this.#wanted = undefined;
  }
}
