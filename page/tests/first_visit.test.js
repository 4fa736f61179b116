// Filters to start from.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open } from './browser.js';
import { boxSettings, designed } from './steps.js';

/**
 * @param {readonly number[]} cascade  b0, b1, b2, a1, a2 of each section
 * @param {number} w  in radians per sample
 * @returns in dB
 */
function level(cascade, w) {
  const square = (/** @type {number[]} */ [c0 = 0, c1 = 0, c2 = 0]) =>
    (c0 + c1 * Math.cos(w) + c2 * Math.cos(2 * w)) ** 2 +
    (c1 * Math.sin(w) + c2 * Math.sin(2 * w)) ** 2;
  let sum = 0;
  for (let at = 0; at < cascade.length; at += 5) {
    const [b0 = 0, b1 = 0, b2 = 0, a1 = 0, a2 = 0] = cascade.slice(at, at + 5);
    sum += 10 * Math.log10(square([b0, b1, b2]) / square([1, a1, a2]));
  }
  return sum;
}

void test('starting points', async (t) => {
  const page = await open(t);
  const names = await page.$$eval('.first-visit li .name', (all) =>
    all.map((one) => one.textContent),
  );
  assert.equal(names.length, 6);

  await t.test('are sound filters', async () => {
    for (const [index, name] of names.entries()) {
      await page.locator('header button[popovertarget]').click();
      await page.locator(`.starting-menu li:nth-child(${index + 1}) button`).click();
      assert.equal(await page.$('.starting-menu:popover-open'), null);
      await designed(page);
      const { problems, title, remarks } = await page.evaluate(async () => {
        const { settings } = window.veltane.store.state.value;
        const { problems, title } = await window.veltane.patient.ask('verdict', { settings });
        return { problems, title, remarks: window.veltane.shown.value?.design.remarks };
      });
      assert.equal(problems, 0, `${name}: ${title}`);
      assert.deepEqual(remarks, [], String(name));
    }
    assert.deepEqual((await boxSettings(page)).samplerate, [96000]);
  });

  await t.test('do what they say', async () => {
    /** @param {string} name @param {number[]} frequencies @returns levels in dB */
    const levels = async (name, frequencies) => {
      await page.locator('header button[popovertarget]').click();
      await page.locator(`.starting-menu ::-p-text(${name})`).click();
      await designed(page);
      const { cascade, samplerate } = await page.evaluate(() => {
        const design = window.veltane.shown.value?.design;
        const published = design?.dictionary.find(([key]) => key === 'cascade')?.[1];
        return {
          cascade: /** @type {number[]} */ (published),
          samplerate: design?.samplerate ?? NaN,
        };
      });
      return frequencies.map((frequency) => level(cascade, (2 * Math.PI * frequency) / samplerate));
    };
    for (const mains of [50, 60]) {
      const [low, high, above] = await levels(`${mains} Hz`, [mains - 0.5, mains + 0.5, 2 * mains]);
      assert.ok(Number(low) < -22 && Number(high) < -22, `${low}, ${high} dB`);
      assert.ok(Number(above) > -0.1);
    }
    const [flat, stopped] = await levels('Anti-alias', [20_000, 24_000]);
    assert.ok(Number(flat) > -0.1, `${flat} dB`);
    assert.ok(Math.abs(Number(stopped) + 96) < 1e-6, `${stopped} dB`);
    const [edge, middle] = await levels('EEG', [0.5, 5]);
    assert.ok(Math.abs(Number(edge) + 3.0103) < 1e-3 && Math.abs(Number(middle)) < 0.01);
  });

  await t.test('are in sight on a first visit only', async () => {
    assert.equal(await page.$('.first-visit'), null, 'they go with the first change');
    const address = page.url().split('#')[0] ?? '';
    await page.goto('about:blank');
    await page.goto(address);
    await page.waitForFunction(() => 'veltane' in window && window.veltane.shown.value);
    assert.ok(await page.$eval('.first-visit', (found) => !found.checkVisibility()));
  });
});

void test('starting points are taken with one click, and not shown with an address', async (t) => {
  const page = await open(t);
  await page.locator('.first-visit li:nth-child(3) button').click();
  const box = await boxSettings(page);
  assert.deepEqual([box.response, box.frequency], [['bandpass'], [300, 3400]]);
  const linked = await open(t, { hash: '#order=4' });
  assert.ok(await linked.$eval('.first-visit', (found) => !found.checkVisibility()));
});
