// Each change of the settings is followed by a design with its curves; a burst by one of the last.

import type { App } from './app.ts';
import { Latest } from './session/latest.ts';
import type { LiveRequest } from './session/protocol.ts';

export function redesignOnChange(app: App): void {
  const latest = new Latest(
    app.live,
    'live',
    (answer, { settings }) => {
      const { value } = app.counts;
      app.counts.set({
        changes: app.store.changes.value,
        designs: value.designs + 1,
        microseconds: answer.microseconds,
      });
      app.refusal.set('');
      app.shown.set({ ...answer, asked: settings });
    },
    (reason) => app.refusal.set(reason.message),
  );
  let asked = '';
  const ask = () => {
    const { settings, other, view } = app.store.state.value;
    const request: LiveRequest = {
      settings,
      ...(other && { other }),
      ...(app.audioRate.value !== undefined && { audio_rate: app.audioRate.value }),
      panels: app.panels.value,
      view,
    };
    const text = JSON.stringify(request);
    if (text === asked) return;
    asked = text;
    latest.ask(request);
  };
  app.store.state.follow(ask);
  app.panels.follow(ask);
  app.audioRate.follow(ask);
}
