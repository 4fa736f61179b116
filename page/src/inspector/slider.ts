// A slider for pointers, touch and keys. Shift goes further, Alt less far.

import { element } from '../dom.ts';
import { placeOf, stepped, strideOf, valueAt, type Scale } from './scale.ts';

export interface Slider {
  readonly element: HTMLElement;
  show(value: number, scale: Scale, text: string): void;
  disable(isDisabled: boolean): void;
}

/** How much slower a handle follows while Alt is held. */
const fineDrag = 0.1;

export interface SliderEvents {
  /** A new value, while the gesture goes on. */
  readonly change: (value: number) => void;
  /** The gesture has ended. */
  readonly settle: () => void;
  readonly reset: () => void;
}

export function slider(label: string, { change, settle, reset }: SliderEvents): Slider {
  const handle = element('span', { class: 'handle' });
  const track = element(
    'div',
    { class: 'slider', role: 'slider', tabindex: '0', 'aria-label': label },
    handle,
  );
  let scale: Scale | undefined;
  let value = NaN;
  let isDisabled = false;
  /** Of the handle, which may lie between two values. */
  let place = 0;
  let lastX = 0;

  const moveTo = (wanted: number) => {
    if (!scale) return;
    place = Math.min(Math.max(wanted, 0), 1);
    const next = valueAt(scale, place);
    if (next !== value) change(next);
  };
  track.addEventListener('pointerdown', (event) => {
    if (isDisabled || event.button !== 0) return;
    track.setPointerCapture(event.pointerId);
    lastX = event.clientX;
    const { left, width } = track.getBoundingClientRect();
    if (event.altKey) place = scale ? placeOf(scale, value) : 0;
    else moveTo((event.clientX - left) / width);
  });
  track.addEventListener('pointermove', (event) => {
    if (isDisabled || !track.hasPointerCapture(event.pointerId)) return;
    const moved = (event.clientX - lastX) / track.getBoundingClientRect().width;
    lastX = event.clientX;
    if (moved !== 0) moveTo(place + moved * (event.altKey ? fineDrag : 1));
  });
  track.addEventListener('lostpointercapture', settle);
  track.addEventListener('dblclick', () => {
    if (!isDisabled) reset();
  });
  track.addEventListener('keydown', (event) => {
    if (isDisabled || !scale?.ends || event.ctrlKey || event.metaKey) return;
    const stride = strideOf(event);
    const next = {
      ArrowRight: () => stepped(scale!, value, 1, stride),
      ArrowUp: () => stepped(scale!, value, 1, stride),
      ArrowLeft: () => stepped(scale!, value, -1, stride),
      ArrowDown: () => stepped(scale!, value, -1, stride),
      PageUp: () => stepped(scale!, value, 1, 'coarse'),
      PageDown: () => stepped(scale!, value, -1, 'coarse'),
      Home: () => valueAt(scale!, 0),
      End: () => valueAt(scale!, 1),
    }[event.key];
    if (!next) return;
    event.preventDefault();
    change(next());
  });
  return {
    element: track,
    show(shown, its, text) {
      scale = its;
      value = shown;
      track.hidden = its.ends === undefined;
      const at = placeOf(its, shown);
      if (scale.ends && valueAt(scale, place) !== shown) place = at;
      handle.style.insetInlineStart = `${at * 100}%`;
      track.setAttribute('aria-valuemin', String(its.ends?.low ?? 0));
      track.setAttribute('aria-valuemax', String(its.ends?.high ?? 0));
      track.setAttribute('aria-valuenow', String(shown));
      track.setAttribute('aria-valuetext', text);
    },
    disable(its) {
      isDisabled = its;
      track.setAttribute('aria-disabled', String(its));
      track.tabIndex = its ? -1 : 0;
    },
  };
}
