// Parts work only where they are seen.

import { Signal } from './state/signal.ts';

/** Whether any of an element is in sight. */
export function seen(element: Element): Signal<boolean> {
  const signal = new Signal(false);
  new IntersectionObserver((entries) => {
    const { isIntersecting } = entries.at(-1)!;
    if (isIntersecting !== signal.value) signal.set(isIntersecting);
  }).observe(element);
  return signal;
}
