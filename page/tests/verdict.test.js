// The verdict beside the pictures: the words of the command, and buttons that make the change.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open } from './browser.js';
import { begin, boxSettings, designed } from './steps.js';

/** @typedef {import('puppeteer-core').Page} Page */

/** @param {Page} page @param {string} wanted */
async function headline(page, wanted) {
  await designed(page);
  await page.waitForFunction(
    (text) => document.querySelector('.verdict [role=status]')?.textContent === text,
    {},
    wanted,
  );
}

/** @param {Page} page */
function findings(page) {
  return page.$$eval('.verdict .finding', (all) => all.map((one) => one.textContent));
}

/** @param {Page} page */
function buttons(page) {
  return page.$$eval('.remedies button', (all) => all.map((one) => one.textContent));
}

/** @param {Page} page @param {string} label */
async function press(page, label) {
  const button = await page.waitForSelector(`.remedies ::-p-text(${label})`);
  await button?.click();
  await designed(page);
}

void test('a fresh box is sound', async (t) => {
  const page = await open(t);
  await headline(page, 'Sound');
  assert.deepEqual(await page.$$('.finding.is-problem'), []);
});

void test('facts are folded, in the words of the session', async (t) => {
  const page = await open(t);
  await headline(page, 'Sound');
  await page.locator('.verdict summary').click();
  await page.waitForSelector('.facts tr');
  const shown = await page.$$eval('.facts tr', (rows) =>
    rows.map((row) => row.lastElementChild?.textContent),
  );
  const said = await page.evaluate(async () => {
    const { patient } = window.veltane;
    const { findings } = await patient.ask('verdict', { settings: {} });
    return findings.filter(({ weight }) => weight === 'fact').map(({ text }) => text);
  });
  assert.ok(said.length > 5);
  assert.deepEqual(shown, said);
});

void test('problems come first, with a button that changes it, and one step takes it back', async (t) => {
  const page = await open(t);
  await begin(page, { response: ['bandpass'], frequency: [3400, 300], passband_ripple: [1] });
  await headline(page, '2 problems');
  const list = await findings(page);
  const isProblem = list.map((text) => text.includes('Problem'));
  assert.deepEqual(
    isProblem,
    [...isProblem].sort((a, b) => Number(b) - Number(a)),
  );
  assert.ok(isProblem.includes(false), 'the ripple that is not used is noted');
  assert.match(list[0] ?? '', /give the lower one first: --frequency 300 3400/);
  await press(page, 'Set frequency 300 3400');
  await headline(page, 'Sound');
  assert.deepEqual((await boxSettings(page)).frequency, [300, 3400]);
  await page.evaluate(() => window.veltane.store.undo());
  await headline(page, '2 problems');
});

void test('each way out has a button', async (t) => {
  const page = await open(t);
  await begin(page, { frequency: [24000] });
  await headline(page, '1 problem');
  assert.deepEqual(await buttons(page), ['Set frequency 23997.6', 'Set samplerate 96000']);
  await press(page, 'Set samplerate 96000');
  await headline(page, 'Sound');
  await begin(page, { zpk_output: [0] });
  await headline(page, '1 problem');
  await press(page, 'Set zpk output on');
  await headline(page, 'Sound');
  assert.deepEqual(await page.evaluate(() => window.veltane.store.state.value.settings), {});
});

void test('an order that is too high is brought down to one that will do', async (t) => {
  const page = await open(t);
  await begin(page, { topology: ['butterworth'], order: [85], frequency: [2.4] });
  await headline(page, '3 problems');
  const button = await page.waitForSelector('.remedies ::-p-text(Set order)', { timeout: 120_000 });
  await button?.click();
  await headline(page, 'Sound');
  const [order] = (await boxSettings(page)).order ?? [];
  assert.ok(Number(order) > 40 && Number(order) < 85, `${order}`);
});

void test('what is refused has a sentence in place of a verdict', async (t) => {
  const page = await open(t);
  await page.evaluate(() => window.veltane.store.set('units', ['radians']));
  await page.waitForFunction(() =>
    document
      .querySelector('.verdict [role=status]')
      ?.textContent.startsWith('No filter: radians are not supported'),
  );
  assert.deepEqual(await findings(page), []);
});

void test('the headline is read out, and only when it changes', async (t) => {
  const page = await open(t);
  await headline(page, 'Sound');
  await page.evaluate(() => {
    const heard = /** @type {string[]} */ ([]);
    Object.assign(window, { heard });
    const status = document.querySelector('.verdict [role=status]');
    if (!status) throw new Error('nothing to read');
    new MutationObserver(() => heard.push(status.textContent)).observe(status, {
      childList: true,
      characterData: true,
      subtree: true,
    });
  });
  for (const order of [6, 7, 8]) {
    await begin(page, { order: [order] });
    await page.waitForFunction(
      (n) => document.querySelector('.facts')?.closest('.stale') === null && n > 0,
      {},
      order,
    );
  }
  await begin(page, { frequency: [24000] });
  await headline(page, '1 problem');
  assert.deepEqual(
    await page.evaluate(
      () => /** @type {{ heard: string[] }} */ (/** @type {unknown} */ (window)).heard,
    ),
    ['1 problem'],
  );
});

void test('a verdict that takes long leaves the processor to a dial that turns', async (t) => {
  const page = await open(t);
  /** @param {number} order @returns how many verdicts there were, and their share of the time */
  const inATurn = (order) =>
    page.evaluate(async (wanted) => {
      const { judge, store } = window.veltane;
      const rest = (/** @type {number} */ ms) => new Promise((done) => setTimeout(done, ms));
      /** @type {{ frequency: unknown, begun: number, ended: number }[]} */
      const judged = [];
      const ask = judge.ask.bind(judge);
      judge.ask = async (name, request) => {
        const begun = performance.now();
        const answer = await ask(name, request);
        if (name === 'verdict' && 'settings' in request)
          judged.push({
            frequency: request.settings.frequency?.[0],
            begun,
            ended: performance.now(),
          });
        return answer;
      };
      /** @param {number} frequency */
      const isJudged = async (frequency) => {
        while (judged.at(-1)?.frequency !== frequency) await rest(20);
      };
      store.merge({ order: [wanted], topology: ['butterworth'], frequency: [2999] });
      await isJudged(2999);
      judged.length = 0;
      const begun = performance.now();
      for (let i = 0; i < 30; ++i) {
        store.merge({ frequency: [3000 + i] });
        await rest(50);
      }
      const ended = performance.now();
      await isJudged(3029);
      judge.ask = ask;
      const judging = judged.reduce(
        (sum, one) => sum + Math.max(0, Math.min(one.ended, ended) - one.begun),
        0,
      );
      return { count: judged.length, share: judging / (ended - begun) };
    }, order);
  const quick = await inATurn(5);
  const slow = await inATurn(200);
  assert.ok(slow.share < 0.5, `${100 * slow.share} % of the time at order 200`);
  assert.ok(quick.count > slow.count, `${quick.count} verdicts at order 5, ${slow.count} at 200`);
});

void test('the headline at the top leads to a verdict that is out of sight', async (t) => {
  const page = await open(t, { width: 1024 });
  await begin(page, { frequency: [24000] });
  await headline(page, '1 problem');
  assert.equal(await page.$eval('.verdict', (one) => one.getBoundingClientRect().top > 900), true);
  await page.locator('.top .verdict-headline').click();
  assert.match(
    await page.$eval('.top .verdict-headline', (one) => one.textContent ?? ''),
    /1 prob/,
  );
  assert.equal(await page.$eval('#verdict-heading', (one) => one === document.activeElement), true);
  const { top, bottom } = await page.$eval('#verdict-heading', (one) => {
    const { top, bottom } = one.getBoundingClientRect();
    return { top, bottom };
  });
  assert.ok(top > 0 && bottom < 900, `the heading stands at ${top}`);
});
