// The dictionary and the layouts of the filter.

import assert from 'node:assert/strict';
import { mkdtemp, readFile, rm } from 'node:fs/promises';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { open } from './browser.js';
import { begin, catchCopies, designed, parsed, textOf } from './steps.js';

/** @param {import('puppeteer-core').Page} page */
async function dictionary(page) {
  await designed(page);
  return page.evaluate(() => window.veltane.shown.value?.design.dictionary ?? []);
}

void test('the dictionary', async (t) => {
  const page = await open(t);
  await page.locator('#tab-published').click();
  const copied = await catchCopies(page);
  const keys = () =>
    page.$$eval('.entry .heading code', (all) => all.map((one) => one.textContent));

  await t.test('is shown key by key, with numbers that read back', async () => {
    await begin(page, { tf_output: [1], order: [4] });
    const published = await dictionary(page);
    assert.deepEqual(
      await keys(),
      published.map(([key]) => key),
    );
    for (const [index, [key, value]] of published.entries()) {
      const text = await page.$eval(`.entry:nth-child(${index + 1}) pre`, (pre) => pre.textContent);
      if (typeof value === 'string') assert.equal(text, value);
      else {
        const shown = (text ?? '')
          .split(/\s+/)
          .filter((word) => /^-?\d/.test(word))
          .map(Number);
        assert.deepEqual(shown, [value].flat(), key);
      }
    }
    await begin(page, { zpk_output: [0] });
    assert.deepEqual(
      await keys(),
      (await dictionary(page)).map(([key]) => key),
    );
  });

  await t.test('is copied, all of it or one key', async () => {
    await begin(page, { order: [30], response: ['bandpass'] });
    const published = await dictionary(page);
    await page.locator('#panel-published button[title*="dictionary"]').click();
    assert.deepEqual(
      Object.entries(/** @type {Record<string, unknown>} */ (parsed(await copied()))),
      published,
    );
    await page.locator('#panel-published button[title*="cascade"]').click();
    const cascade = published.find(([key]) => key === 'cascade')?.[1];
    assert.deepEqual(parsed(await copied()), cascade);
  });

  await t.test('folds long lists', async () => {
    const rows = () =>
      page.$eval('.entry:last-child pre', (pre) => (pre.textContent ?? '').split('\n').length);
    assert.equal(await rows(), 13);
    await page.locator('.entry:last-child > button').click();
    assert.equal(await rows(), 31);
    await begin(page, { order: [29], response: ['bandpass'] });
    assert.equal(await rows(), 30, 'and keeps them as the user has them');
  });

  await t.test('is not written where it is not seen', async () => {
    const numbers = () => textOf(page, '.dictionary .entry:last-child pre');
    await page.locator('#tab-layouts').click();
    const before = await numbers();
    await page.evaluate(() => new Promise((done) => setTimeout(done, 100)));
    await begin(page, { order: [3] });
    assert.equal(await numbers(), before);
    await page.locator('#tab-published').click();
    await page.waitForFunction(
      (text) => document.querySelector('.dictionary .entry:last-child pre')?.textContent !== text,
      {},
      before,
    );
  });
});

void test('the layouts', async (t) => {
  const folder = await mkdtemp(path.join(os.tmpdir(), 'veltane-layouts-'));
  t.after(() => rm(folder, { recursive: true }));
  const page = await open(t, { hash: '#order=6&frequency=440' });
  const client = await page.createCDPSession();
  await client.send('Browser.setDownloadBehavior', { behavior: 'allow', downloadPath: folder });
  await page.locator('#tab-layouts').click();
  const settings = { order: [6], frequency: [440] };
  const targets = await page.evaluate(() => window.veltane.description.targets);

  /** @param {string} name @param {object} [options] */
  const answered = (name, options = {}) =>
    page.evaluate(
      (request) =>
        window.veltane.patient.ask('layout', request).then(
          (layout) => layout.text,
          (reason) => String(reason),
        ),
      { settings, target: name, ...options },
    );
  const shown = async () => {
    await page.waitForFunction(
      () => document.querySelector('#panel-layouts pre')?.textContent !== '',
    );
    return textOf(page, '#panel-layouts pre');
  };
  /** @param {string} expected */
  const becomes = (expected) =>
    page.waitForFunction(
      (text) => document.querySelector('#panel-layouts pre')?.textContent === text,
      {},
      expected,
    );

  await t.test('are all there, as the session writes them', async () => {
    assert.ok(targets.length >= 19);
    for (const { name, summary } of targets) {
      await page.select('#layout-target', name);
      const expected = await answered(name);
      if (expected.startsWith('Refused: ')) {
        await page.waitForFunction(
          (text) =>
            document.querySelector('#panel-layouts .layout-remarks')?.textContent === `${text}.`,
          {},
          expected.slice('Refused: '.length),
        );
        assert.ok(await page.$eval('#panel-layouts pre', (pre) => !pre.checkVisibility()));
      } else {
        await becomes(expected);
      }
      assert.equal(await textOf(page, '#layout-summary'), summary);
    }
  });

  await t.test('take the options of the command', async () => {
    await page.select('#layout-target', 'c');
    for (const option of ['normalise', 'as_published', 'anyway']) {
      await page.locator(`#panel-layouts input[name="${option}"]`).click();
      await becomes(await answered('c', { [option]: true }));
      const command = await textOf(page, '#panel-layouts .command');
      assert.ok(command.includes(option.replace('_', '-')), command);
      await page.locator(`#panel-layouts input[name="${option}"]`).click();
    }
    await becomes(await answered('c'));
  });

  await t.test('are copied and saved', async () => {
    const copied = await catchCopies(page);
    await page.select('#layout-target', 'scipy');
    const expected = await answered('scipy');
    await becomes(expected);
    await page.locator('#panel-layouts .row button:nth-of-type(1)').click();
    assert.equal(await copied(), expected);
    await page.locator('#panel-layouts .row button:nth-of-type(2)').click();
    for (let turn = 0; ; ++turn) {
      const text = await readFile(path.join(folder, 'lowpass_440.py'), 'utf8').catch(() => '');
      if (text === expected) break;
      assert.ok(turn < 1500, 'not saved');
      await new Promise((done) => setTimeout(done, 20));
    }
  });

  await t.test('say why a filter cannot be written', async () => {
    await page.select('#layout-target', 'webaudio');
    await begin(page, { order: [40] });
    await page.waitForFunction(() =>
      document.querySelector('#panel-layouts .layout-remarks.problem'),
    );
    assert.match(await textOf(page, '#panel-layouts .layout-remarks'), /19|poles/);
    await begin(page, { order: [4] });
    assert.match(await shown(), /IIRFilter|feedback/i);
  });
});
