// Puts the page together.

import type { App, Counts, Headline, Shown } from './app.ts';
import { compare } from './compare/compare.ts';
import { element } from './dom.ts';
import { firstVisit, startingMenu } from './first_visit/first_visit.ts';
import { inspector } from './inspector/inspector.ts';
import { keep } from './keep/keep.ts';
import { followDrops } from './keep/open.ts';
import { header } from './layout/header.ts';
import { followKeys } from './layout/keys.ts';
import { notice } from './layout/notice.ts';
import { tabs } from './layout/tabs.ts';
import { layouts } from './layouts/layouts.ts';
import { published } from './published/published.ts';
import { order } from './order/order.ts';
import { pictures } from './pictures/pictures.ts';
import { listen } from './listen/listen.ts';
import { redesignOnChange } from './redesign.ts';
import { Session } from './session/client.ts';
import { carriedModule } from './session/module.ts';
import type { PanelName } from './session/protocol.ts';
import { readAddress } from './state/address.ts';
import { complaint, followAddress } from './state/link.ts';
import { Signal } from './state/signal.ts';
import { Store } from './state/store.ts';
import { strings } from './strings.ts';
import { followTheme } from './theme.ts';
import { verdict } from './verdict/verdict.ts';

function layout(app: App): HTMLElement {
  const words = strings.layout;
  return element(
    'main',
    {},
    element(
      'section',
      { id: 'inspector', 'aria-label': words.inspector },
      inspector(app),
      keep(app),
    ),
    element('section', { id: 'pictures', 'aria-label': words.pictures }, pictures(app)),
    element(
      'section',
      { id: 'tools', 'aria-label': words.tools },
      // It is about every change, so that it stands above what is looked at now and then.
      verdict(app),
      tabs([
        { name: 'published', title: strings.published.title, make: () => published(app) },
        { name: 'layouts', title: strings.layouts.title, make: () => layouts(app) },
        { name: 'order', title: strings.order.title, make: () => order(app) },
        { name: 'compare', title: strings.compare.title, make: () => compare(app) },
        { name: 'listen', title: strings.listen.heading, make: () => listen(app) },
      ]),
    ),
  );
}

/** What cannot be a filter would leave the page without one. */
function startFreshIfRefused(app: App): void {
  const stop = app.refusal.follow((reason) => {
    if (reason === '' || app.shown.value) return;
    app.notice.set(strings.link.refused(reason));
    app.store.open({ settings: {}, view: {} });
    queueMicrotask(stop);
  });
}

async function start(): Promise<void> {
  const module = await carriedModule(document.querySelector('#module')!);
  const live = new Session(module);
  const description = await live.ask('describe', {});
  // The first filter is shown before these are ready.
  const patient = new Session(module);
  const judge = new Session(module);
  const status = document.querySelector<HTMLElement>('#status')!;
  const address = readAddress(location.hash, description.attributes);
  const store = new Store(address.state, description.fresh);
  const app: App = {
    description,
    live,
    patient,
    judge,
    store,
    shown: new Signal<Shown | undefined>(undefined),
    refusal: new Signal(''),
    headline: new Signal<Headline>({ kind: 'pending', text: strings.verdict.judging }),
    notice: new Signal(complaint(address)),
    panels: new Signal<readonly PanelName[]>([]),
    audioRate: new Signal<number | undefined>(undefined),
    counts: new Signal<Counts>({ changes: 0, designs: 0, microseconds: 0 }),
    announce: (sentence) => (status.textContent = sentence),
    settings: () => ({ ...description.fresh, ...store.state.value.settings }),
  };
  window.veltane = app;
  followTheme();
  document
    .querySelector('#loading')!
    .replaceWith(header(app, startingMenu(app)), notice(app), firstVisit(app), layout(app));
  followKeys(app);
  followDrops(app);
  startFreshIfRefused(app);
  redesignOnChange(app);
  followAddress(app);
}

start().catch((reason: unknown) => {
  (document.querySelector('#loading') ?? document.body).textContent = strings.cannotStart(
    String(reason),
  );
});
