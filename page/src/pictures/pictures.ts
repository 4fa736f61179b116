// The pictures of the filter. Only what is in sight is asked for and drawn.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { LiveAnswer, PanelName } from '../session/protocol.ts';
import { Signal } from '../state/signal.ts';
import { strings } from '../strings.ts';
import { Choices, panelNames } from './choice.ts';
import { readPanels, readout } from './crosshair.ts';
import { Frame } from './frame.ts';
import { FrequencyPanel } from './frequency_panel.ts';
import type { Picture, Room } from './picture.ts';
import { RootPanel } from './root_panel.ts';
import { themeOf } from './theme.ts';
import { TimePanel } from './time_panel.ts';
import { toolbar } from './toolbar.ts';

function pictureOf(name: PanelName, room: Room): Picture {
  switch (name) {
    case 'zeros_and_poles':
    case 'poles':
      return new RootPanel(name, room);
    case 'impulse':
    case 'step':
      return new TimePanel(name, room);
    default:
      return new FrequencyPanel(name, room);
  }
}

/** Sets a mark of the browser's, and forgets the one before: a page is open all day. */
function mark(name: string): void {
  performance.clearMarks(name);
  performance.mark(name);
}

/** Words change at leisure: nobody reads them while a dial turns. */
const wordsAfter = 200;

export function pictures(app: App): HTMLElement {
  const choices = new Choices();
  const sheet = element('div', { class: 'picture-sheet' });
  const undrawable = element('p', { class: 'undrawable', hidden: '' });
  const legend = element(
    'p',
    { class: 'picture-legend', hidden: '' },
    element('span', { class: 'a' }, strings.pictures.legend.a),
    element('span', { class: 'b' }, strings.pictures.legend.b),
  );
  const crosshair = new Signal<number | undefined>(undefined);
  const made = element('div', { class: 'pictures' });
  const bar = element('div', { class: 'picture-bar' }, readout(app, crosshair), legend);
  made.append(toolbar(app, choices), bar, undrawable, sheet);

  const start = () => {
    const room: Room = { app, crosshair, colours: themeOf(made) };
    const frames = panelNames.map((name) => new Frame(name, pictureOf(name, room), choices));
    sheet.append(...frames.map((frame) => frame.element));
    askForWhatIsSeen(app, frames, crosshair);
    takeSizes(frames);
    choices.value.follow(() => arrange(app, choices, frames));
    app.store.state.follow(() => arrange(app, choices, frames));
    room.colours.follow(() => frames.forEach(({ picture }) => picture.redraw()));
    drawAnswers(app, frames);
  };
  // Colours and sizes are known when it is in the page.
  if (made.isConnected) start();
  else requestAnimationFrame(start);

  app.store.changes.follow(() => mark('veltane:input'));
  app.shown.follow((answer) => {
    undrawable.hidden = !answer?.undrawable;
    undrawable.textContent = answer ? strings.pictures.undrawable(answer.undrawable) : '';
    sheet.classList.toggle('stale', Boolean(answer?.undrawable));
    legend.hidden = !answer?.other;
  });
  return made;
}

function arrange(app: App, choices: Choices, frames: readonly Frame[]): void {
  const { enlarged } = choices.value.value;
  const isPinned = app.store.state.value.other !== undefined;
  for (const frame of frames) {
    const isPossible = frame.name !== 'difference' || isPinned;
    frame.element.hidden = !choices.isOpen(frame.name) || !isPossible;
    frame.isEnlarged = enlarged === frame.name;
  }
}

function askForWhatIsSeen(app: App, frames: readonly Frame[], crosshair: Room['crosshair']): void {
  const ask = () => {
    const seen = frames.filter((frame) => frame.isSeen).map(({ name }) => name);
    const read = crosshair.value === undefined ? [] : readPanels;
    const wanted = [...new Set<PanelName>([...seen, ...read])];
    if (wanted.join() !== app.panels.value.join()) app.panels.set(wanted);
  };
  const observer = new IntersectionObserver(
    (entries) => {
      for (const { target, isIntersecting } of entries) {
        const frame = frames.find((other) => other.element === target);
        if (frame) frame.isSeen = isIntersecting;
      }
      ask();
    },
    // What comes next when the page is scrolled is ready.
    { rootMargin: '120px' },
  );
  for (const frame of frames) observer.observe(frame.element);
  let wasReading = false;
  crosshair.follow((hertz) => {
    if ((hertz !== undefined) === wasReading) return;
    wasReading = hertz !== undefined;
    ask();
  });
}

function takeSizes(frames: readonly Frame[]): void {
  const observer = new ResizeObserver((entries) => {
    for (const { target, contentRect } of entries)
      frames
        .find(({ picture }) => picture.element === target)
        ?.picture.resize(contentRect.width, contentRect.height);
  });
  for (const { picture } of frames) observer.observe(picture.element);
}

/** Draws each answer at once, but not more than one in a frame of the screen. */
function drawAnswers(app: App, frames: readonly Frame[]): void {
  let isDrawn = false;
  let waiting: LiveAnswer | undefined;
  let describing: ReturnType<typeof setTimeout> | undefined;
  const draw = (answer: LiveAnswer) => {
    isDrawn = true;
    for (const frame of frames) frame.draw(answer);
    mark('veltane:drawn');
    clearTimeout(describing);
    describing = setTimeout(() => {
      for (const { picture } of frames) picture.describe(answer);
    }, wordsAfter);
    requestAnimationFrame(() => {
      isDrawn = false;
      const next = waiting;
      waiting = undefined;
      if (next) draw(next);
    });
  };
  app.shown.follow((answer) => {
    if (!answer) return;
    if (isDrawn) waiting = answer;
    else draw(answer);
  });
}
