// Two filters side by side.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open } from './browser.js';
import { begin, textOf } from './steps.js';

void test('comparing', async (t) => {
  const page = await open(t);
  await page.locator('#tab-compare').click();
  /** @param {string} label */
  const press = (label) => page.locator(`#panel-compare ::-p-text(${label})`).click();
  const state = () => page.evaluate(() => window.veltane.store.state.value);
  const bothShown = () =>
    page.waitForFunction(() => {
      const { shown, store } = window.veltane;
      return (
        shown.value?.other &&
        JSON.stringify(shown.value.asked) === JSON.stringify(store.state.value.settings)
      );
    });
  const rows = () =>
    page.$$eval('#panel-compare tbody tr', (all) =>
      all.map((row) => [...row.children].map((cell) => cell.textContent)),
    );
  await begin(page, { order: [6] });
  await press('Pin as B');
  assert.deepEqual((await state()).other, { order: [6] });
  await page.evaluate(() => window.veltane.store.set('order', [9]));
  await bothShown();
  await page.waitForFunction(() => document.querySelectorAll('#panel-compare table').length === 2);
  const shown = await rows();
  assert.deepEqual(shown[0], ['Order', '9', '6']);
  assert.deepEqual(
    shown.find(([name]) => name === 'poles'),
    ['poles', '9', '6'],
  );
  await press('Swap A and B');
  const { settings, other } = await state();
  assert.deepEqual([settings, other], [{ order: [6] }, { order: [9] }]);
  await page.waitForFunction(
    () => document.querySelector('#panel-compare tbody td')?.textContent === '6',
  );
  await press('Unpin B');
  assert.equal((await state()).other, undefined);
  assert.match(await textOf(page, '#panel-compare'), /Pin the filter as B/);
  assert.deepEqual(await rows(), []);
});
