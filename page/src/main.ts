// Puts the page together.

import type { App, Counts } from './app.ts';
import { element } from './dom.ts';
import { redesignOnChange } from './redesign.ts';
import { Session } from './session/client.ts';
import { carriedModule } from './session/module.ts';
import type { LiveAnswer, PanelName } from './session/protocol.ts';
import { Signal } from './state/signal.ts';
import { Store } from './state/store.ts';
import { strings } from './strings.ts';

async function start(): Promise<void> {
  const module = await carriedModule(document.querySelector('#module')!);
  const [live, patient] = await Promise.all([Session.start(module), Session.start(module)]);
  const description = await live.ask('describe', {});
  const status = document.querySelector<HTMLElement>('#status')!;
  const store = new Store({ settings: {}, view: {} }, description.fresh);
  const app: App = {
    description,
    live,
    patient,
    store,
    shown: new Signal<LiveAnswer | undefined>(undefined),
    refusal: new Signal(''),
    panels: new Signal<readonly PanelName[]>(['level', 'phase']),
    audioRate: new Signal<number | undefined>(undefined),
    counts: new Signal<Counts>({ changes: 0, designs: 0, microseconds: 0 }),
    announce: (sentence) => (status.textContent = sentence),
    settings: () => ({ ...description.fresh, ...store.state.value.settings }),
  };
  const main = document.querySelector('main')!;
  const counts = element('output', { class: 'counts' });
  main.replaceChildren(counts);
  app.counts.follow(({ changes, designs, microseconds }) => {
    counts.value = strings.counts(changes, designs, microseconds);
  });
  redesignOnChange(app);
  window.veltane = app;
}

start().catch((reason: unknown) => {
  document.querySelector('main')!.textContent = strings.cannotStart(String(reason));
});
