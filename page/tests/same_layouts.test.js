// Every layout is written as the command writes it.

import assert from 'node:assert/strict';
import test from 'node:test';
import { open } from './browser.js';
import { run } from './command.js';
import { randomSettings } from './random_settings.js';

const filters = [{}, { order: [40] }, ...randomSettings(7, 4)];
const choices = [{}, { normalise: true }, { as_published: true }, { anyway: true }];

test('layouts are those of the command, refusals included', async (t) => {
  const page = await open(t);
  const targets = await page.evaluate(() =>
    window.veltane.description.targets.map(({ name }) => name),
  );
  let written = 0;
  for (const target of targets)
    for (const [i, settings] of filters.entries()) {
      const choice = choices[i % choices.length] ?? {};
      const layout = await page.evaluate(
        async (request) => {
          try {
            return await window.veltane.patient.ask('layout', request);
          } catch (refused) {
            return { refusal: /** @type {Error} */ (refused).message };
          }
        },
        { target, settings, ...choice },
      );
      const label = `${target}, filter ${i}`;
      if ('refusal' in layout) {
        const words = await words_of(page, settings);
        const flags = Object.keys(choice).map((name) => `--${name.replace('_', '-')}`);
        const { status, errors } = await run(['export', '--for', target, ...words, ...flags]);
        assert.equal(status, 2, label);
        assert.ok(errors.includes(layout.refusal), `${label}: ${layout.refusal} | ${errors}`);
        continue;
      }
      const { status, output } = await run(layout.command.slice(1));
      assert.equal(status, 0, label);
      assert.ok(same(layout.text, output), `${label}:\n${layout.text}\n${output}`);
      written += 1;
    }
  assert.ok(written > targets.length * 3, `${written} layouts`);
});

/**
 * @param {import('puppeteer-core').Page} page
 * @param {Record<string, (number | string)[]>} settings
 */
async function words_of(page, settings) {
  const { design } = await page.evaluate(
    (one) => window.veltane.live.ask('live', { settings: one, panels: [] }),
    settings,
  );
  return design.command.slice(2);
}

const number = /-?\d+(?:\.\d+)?(?:e[-+]?\d+)?/g;

/**
 * The sines of two machines differ in their last digits, and so does what is computed of them. Texts
 * are the same apart from numbers; coefficients, which have many digits, are the same to 1e-9, and
 * what is predicted of them, in few digits, to a hundredth.
 * @param {string} a
 * @param {string} b
 */
function same(a, b) {
  if (a === b) return true;
  if (a.replaceAll(number, '#') !== b.replaceAll(number, '#')) return false;
  const [left = [], right = []] = [a, b].map((text) => text.match(number) ?? []);
  return left.every((x, i) => {
    const [p, q] = [Number(x), Number(right[i])];
    const most = x.replace(/\D/g, '').length > 6 ? 1e-9 : 0.01;
    return Math.abs(p - q) <= most * Math.max(1, Math.abs(p));
  });
}
