// What was found: problems first, then notes, each with what to change; facts in a table.

import type { App } from '../app.ts';
import { element } from '../dom.ts';
import type { Finding, Settings, Verdict } from '../session/protocol.ts';
import { strings } from '../strings.ts';
import { asOptions, inWords } from './remedy_text.ts';

const words = strings.verdict;

function remedyButton(app: App, remedy: Settings): HTMLButtonElement {
  const { description } = app;
  const title = words.setTitle(asOptions(description, remedy));
  const made = element(
    'button',
    { type: 'button', title },
    words.set(inWords(description, remedy)),
  );
  made.addEventListener('click', () => {
    app.store.settle();
    app.store.merge(remedy);
    app.store.settle();
  });
  return made;
}

function item(app: App, finding: Finding, lowerOrder: Settings | undefined): HTMLElement {
  const problem = finding.weight === 'problem';
  const remedies = [
    ...(finding.lower_order && lowerOrder ? [lowerOrder] : []),
    ...finding.remedies,
  ];
  const made = element(
    'li',
    { class: problem ? 'finding is-problem' : 'finding' },
    element(
      'p',
      {},
      element('span', { 'aria-hidden': 'true' }, problem ? '✗ ' : '! '),
      element('span', { class: 'kind' }, words.kind(finding.weight, finding.about)),
      ` ${finding.text}`,
    ),
    element('p', { class: 'change' }, words.change, finding.change),
  );
  if (remedies.length > 0)
    made.append(
      element('div', { class: 'remedies' }, ...remedies.map((remedy) => remedyButton(app, remedy))),
    );
  return made;
}

/** @param lowerOrder  the remedy of those findings that want a lower order, if it is known */
export function findings(
  app: App,
  verdict: Verdict,
  lowerOrder: Settings | undefined,
): HTMLElement[] {
  return (['problem', 'note'] as const).flatMap((weight) => {
    const list = verdict.findings.filter((finding) => finding.weight === weight);
    if (list.length === 0) return [];
    return [element('ul', {}, ...list.map((finding) => item(app, finding, lowerOrder)))];
  });
}

export interface Facts {
  readonly element: HTMLElement;
  show(verdict: Verdict | undefined): void;
}

export function facts(): Facts {
  const summary = element('summary', {});
  const body = element('tbody');
  const made = element('details', {}, summary, element('table', { class: 'facts' }, body));
  made.hidden = true;
  let shown: Verdict | undefined;
  const fill = () => {
    if (!made.open) return;
    let about = '';
    body.replaceChildren(
      ...(shown?.findings ?? [])
        .filter(({ weight }) => weight === 'fact')
        .map((fact) => {
          const name = fact.about === about ? '' : fact.about;
          about = fact.about;
          return element(
            'tr',
            {},
            element(name === '' ? 'td' : 'th', name === '' ? {} : { scope: 'row' }, name),
            element('td', {}, fact.text),
          );
        }),
    );
  };
  made.addEventListener('toggle', fill);
  return {
    element: made,
    show(verdict) {
      shown = verdict;
      const count = verdict?.findings.filter(({ weight }) => weight === 'fact').length ?? 0;
      made.hidden = count === 0;
      summary.textContent = words.facts(count);
      fill();
    },
  };
}
