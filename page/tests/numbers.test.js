// What the page designs, lays out and judges is what the command does.

import assert from 'node:assert/strict';
import test from 'node:test';
import { open } from './browser.js';
import { run } from './command.js';
import { randomSettings } from './random_settings.js';

/** @typedef {{ settings: Record<string, unknown>, dictionary: Record<string, unknown> }} Saved */

const seed = 20260411;
const most = 1e-11;

/**
 * @param {unknown} value
 * @returns {unknown[]}
 */
const list = (value) => (Array.isArray(value) ? /** @type {unknown[]} */ (value) : [value]);

/**
 * @param {string} line
 * @returns {Saved}
 */
const parsed = (line) => JSON.parse(line);

/**
 * Roots come in an order that a last digit may change.
 * @param {string} key
 * @param {unknown[]} wanted
 * @param {unknown[]} found
 */
function inOrderOf(key, wanted, found) {
  if (key !== 'zeroes' && key !== 'poles') return found;
  const [left, order] = [pairs(found), pairs(wanted)];
  return order.flatMap(([re, im]) => {
    const distances = left.map(([x, y]) => Math.hypot(x - re, y - im));
    const [nearest] = left.splice(distances.indexOf(Math.min(...distances)), 1);
    return nearest ?? [];
  });
}

/**
 * @param {unknown[]} values
 * @returns {[number, number][]}
 */
const pairs = (values) =>
  Array.from({ length: values.length / 2 }, (_, i) => [
    Number(values[2 * i]),
    Number(values[2 * i + 1]),
  ]);

test(`300 filters of seed ${seed} have the numbers of the command`, async (t) => {
  const settings = randomSettings(seed, 300);
  const page = await open(t);
  const designed = await page.evaluate(async (all) => {
    const designs = [];
    for (const one of all) {
      const { design } = await window.veltane.live.ask('live', { settings: one, panels: [] });
      designs.push(design.dictionary);
    }
    return designs;
  }, settings);
  const lines = settings.map((one) => JSON.stringify(one)).join('\n');
  const { output } = await run(['design', '--batch', '-'], `${lines}\n`);
  const saved = output.trim().split('\n').map(parsed);
  assert.equal(saved.length, settings.length);
  let compared = 0;
  saved.forEach(({ dictionary }, i) => {
    const label = `filter ${i}: ${JSON.stringify(settings[i])}`;
    const published = new Map(designed[i]);
    assert.deepEqual([...published.keys()], Object.keys(dictionary), label);
    for (const [key, value] of Object.entries(dictionary)) {
      const wanted = list(value);
      const found = inOrderOf(key, wanted, list(published.get(key)));
      assert.equal(found.length, wanted.length, `${label}: ${key}`);
      wanted.forEach((number, k) => {
        if (typeof number !== 'number') return assert.equal(found[k], number, `${label}: ${key}`);
        const difference = Math.abs(Number(found[k]) - number);
        assert.ok(
          difference <= most * Math.max(1, Math.abs(number)),
          `${label}: ${key}[${k}] is ${String(found[k])}, and ${number} at a terminal`,
        );
        compared += 1;
      });
    }
  });
  assert.ok(compared > 100_000, `${compared} numbers`);
});
