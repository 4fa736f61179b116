// The verdict in a word or two, which is read out when it changes.

import { element } from '../dom.ts';
import type { Verdict } from '../session/protocol.ts';
import { strings } from '../strings.ts';

const words = strings.verdict;

export interface Headline {
  readonly element: HTMLElement;
  show(verdict: Verdict): void;
  refuse(reason: string): void;
}

export function headline(): Headline {
  const mark = element('span', { 'aria-hidden': 'true' });
  const text = element('span', { role: 'status', 'aria-live': 'polite' }, words.judging);
  const made = element('p', { class: 'verdict-headline' }, mark, text);
  const say = (kind: 'sound' | 'problem', icon: string, sentence: string) => {
    made.dataset.kind = kind;
    mark.textContent = icon;
    // The same text set again would be read again.
    if (text.textContent !== sentence) text.textContent = sentence;
  };
  return {
    element: made,
    show: ({ problems }) => {
      if (problems === 0) say('sound', '✓', words.sound);
      else say('problem', '✗', words.problems(problems));
    },
    refuse: (reason) => say('problem', '✗', `${words.noFilter}: ${reason}`),
  };
}
