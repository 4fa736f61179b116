// The page's address follows the filter, and the filter an address that is typed or gone back to.

import type { App } from '../app.ts';
import { strings } from '../strings.ts';
import { readAddress, writeAddress, type Address } from './address.ts';

/** Browsers refuse an address that changes all the time. In milliseconds. */
const pause = 300;

/** How much of a wrong address is said again, in characters. */
const enough = 60;

function shortened(text: string): string {
  return text.length > enough ? `${text.slice(0, enough)}…` : text;
}

/** What was wrong with an address and what is used instead; empty if nothing was. */
export function complaint({ wrong, isTooLong }: Address): string {
  if (isTooLong) return strings.link.tooLong;
  return wrong.length > 0 ? strings.link.wrong(shortened(wrong.join(', '))) : '';
}

export function linkTo(app: App): string {
  const [page] = location.href.split('#');
  const written = writeAddress(app.store.state.value);
  return written === '' ? page! : `${page}#${written}`;
}

export function followAddress(app: App): void {
  let timer: ReturnType<typeof setTimeout> | undefined;
  const write = () => {
    timer = undefined;
    const link = linkTo(app);
    if (link !== location.href) history.replaceState(history.state, '', link);
    // Tabs and bookmarks are told apart by it.
    const filter = app.shown.value?.design.title;
    document.title = filter === undefined ? strings.title : strings.link.title(filter);
  };
  app.store.state.follow(() => (timer ??= setTimeout(write, pause)));
  addEventListener('hashchange', () => {
    clearTimeout(timer);
    timer = undefined;
    const address = readAddress(location.hash, app.description.attributes);
    app.notice.set(complaint(address));
    app.store.settle();
    app.store.open(address.state);
    app.store.settle();
  });
}
