// Which order? A demand is drawn, and the least order of each family stands beside it.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import { Latest } from '../session/latest.ts';
import type { Candidate, Curve, LiveAnswer, Settings } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { candidateTable, settingsOf } from './candidates.ts';
import type { Demand } from './demand.ts';
import { DemandFields } from './demand_fields.ts';
import { DemandPicture } from './demand_picture.ts';
import { demandOf } from './start.ts';

/** What a filter's level is, whatever the panels show. */
function levelIn(answer: LiveAnswer): Curve | undefined {
  return answer.panels.level?.curves[0];
}

export function order(app: App): HTMLElement {
  let demand: Demand | undefined;
  let isSeen = false;
  /** Whether the demand is the user's, and no longer that of a filter. */
  let isOwn = false;
  let levels: { present?: Curve; candidate?: Curve } = {};
  let candidates: readonly Candidate[] = [];
  let looked: Candidate | undefined;

  const picture = new DemandPicture(change, () => {
    showPresent();
    lookAt(looked);
  });
  const fields = new DemandFields(change);
  const table = candidateTable(app, (candidate) => lookAt(candidate));
  const restart = element('button', { type: 'button' }, strings.order.restart);
  restart.addEventListener('click', () => {
    isOwn = false;
    begin();
  });
  const made = element(
    'div',
    { class: 'order' },
    picture.element,
    element('div', { class: 'demand' }, fields.element, restart),
    table.element,
  );

  const nyquist = () => (app.shown.value?.design.samplerate ?? 0) / 2;

  const estimates = new Latest(
    app.patient,
    'estimate',
    (answer) => {
      candidates = answer.candidates;
      table.show(candidates);
      lookAt(undefined);
    },
    (reason) => table.refuse(reason.message),
  );
  const starts = new Latest(
    app.patient,
    'live',
    (answer) => {
      const level = levelIn(answer);
      if (!level || isOwn) return;
      demand = demandOf(answer.design, level);
      ask();
    },
    (reason) => table.refuse(reason.message),
  );
  const presents = new Latest(
    app.patient,
    'live',
    (answer) => {
      const present = levelIn(answer);
      levels = { ...levels, ...(present && { present }) };
      picture.showLevels(levels);
    },
    (reason) => table.refuse(reason.message),
  );
  const looks = new Latest(
    app.patient,
    'live',
    (answer) => {
      const candidate = levelIn(answer);
      levels = { ...levels, ...(candidate && { candidate }) };
      picture.showLevels(levels);
    },
    (reason) => table.refuse(reason.message),
  );

  function levelOf(settings: Settings) {
    const rate = app.audioRate.value;
    return { settings, panels: ['level'] as const, ...(rate && { audio_rate: rate }) };
  }

  /** A level over the frequencies of the picture, once it has some. */
  function shownLevelOf(settings: Settings) {
    const view = picture.frequencies;
    return view && { ...levelOf(settings), view };
  }

  /** Draws a candidate, and the recommended one if none is pointed at. */
  function lookAt(candidate: Candidate | undefined): void {
    looked = candidate;
    const shown = candidate ?? candidates.find(({ recommended }) => recommended);
    if (!shown) return;
    const asked = shownLevelOf({ ...app.store.state.value.settings, ...settingsOf(app, shown) });
    if (asked) looks.ask(asked);
  }

  function showPresent(): void {
    const asked = shownLevelOf(app.store.state.value.settings);
    if (asked) presents.ask(asked);
  }

  function begin(): void {
    if (!isSeen) return;
    showPresent();
    if (!isOwn) starts.ask(levelOf(app.store.state.value.settings));
  }

  function change(changed: Demand): void {
    isOwn = true;
    demand = changed;
    ask();
  }

  function ask(): void {
    if (!demand) return;
    fields.show(demand, nyquist());
    picture.show(demand, nyquist());
    estimates.ask({ ...demand, samplerate: 2 * nyquist() });
  }

  new IntersectionObserver((entries) => {
    const was = isSeen;
    isSeen = entries.at(-1)?.isIntersecting ?? false;
    if (isSeen && !was && app.shown.value) begin();
  }).observe(made);
  app.shown.follow((answer) => {
    if (answer && isSeen) begin();
  });
  return made;
}
