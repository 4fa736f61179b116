// The frame of a panel: its title, and buttons that enlarge and close it.

import { element } from '../dom.ts';
import type { LiveAnswer, PanelName } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import type { Choices } from './choice.ts';
import type { Picture } from './picture.ts';

export class Frame {
  readonly element: HTMLElement;
  readonly name: PanelName;
  readonly picture: Picture;
  readonly #title = element('h2');
  readonly #note = element('span', { class: 'note' });
  readonly #enlarge: HTMLButtonElement;
  /** Whether any of it is in sight. */
  isSeen = false;

  constructor(name: PanelName, picture: Picture, choices: Choices) {
    this.name = name;
    this.picture = picture;
    const title = strings.pictures.panels[name];
    this.#title.textContent = title;
    this.#enlarge = element('button', { type: 'button' }, '⤢');
    this.#enlarge.addEventListener('click', () => choices.toggleSize(name));
    const label = strings.pictures.close(title);
    const close = element('button', { type: 'button', 'aria-label': label, title: label }, '×');
    close.addEventListener('click', () => choices.close(name));
    const head = element('div', { class: 'head' }, this.#title, this.#note, this.#enlarge, close);
    this.element = element('div', { class: 'picture', 'data-panel': name }, head, picture.element);
  }

  set isEnlarged(isEnlarged: boolean) {
    this.element.classList.toggle('enlarged', isEnlarged);
    const { enlarge, reduce, panels } = strings.pictures;
    const label = (isEnlarged ? reduce : enlarge)(panels[this.name]);
    this.#enlarge.setAttribute('aria-label', label);
    this.#enlarge.title = label;
    this.#enlarge.setAttribute('aria-pressed', String(isEnlarged));
  }

  draw(answer: LiveAnswer): void {
    if (!answer.panels[this.name]) return;
    const { title, note } = this.picture.head(answer);
    for (const [place, text] of [
      [this.#title, title],
      [this.#note, note],
    ] as const)
      if (place.textContent !== text) place.textContent = place.title = text;
    this.picture.draw(answer);
  }
}
