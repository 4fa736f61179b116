// What is heard, recorded: the page's audio runs in an OfflineAudioContext in place of the
// loudspeakers, and the reference is computed here, in doubles, from the published sections.

import assert from 'node:assert/strict';
import { mkdtemp, rm, writeFile } from 'node:fs/promises';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { open } from './browser.js';
import { press } from './steps.js';

const rate = 48000;

/** @typedef {import('puppeteer-core').Page} Page */
/** @typedef {import('node:test').TestContext} TestContext */

/**
 * @param {TestContext} t
 * @param {number} [seconds]  undefined to play and not to record
 */
function openRecorded(t, seconds) {
  return open(t, {
    before: async (page) => {
      if (seconds === undefined) return;
      await page.evaluateOnNewDocument(
        (length, sampleRate) => {
          class Recorder extends OfflineAudioContext {
            constructor() {
              super({ numberOfChannels: 1, length, sampleRate });
              Object.assign(window, { recorder: this });
            }
            close() {
              return Promise.resolve();
            }
          }
          Object.assign(window, { AudioContext: Recorder });
        },
        Math.round(seconds * rate),
        rate,
      );
    },
  });
}

/** @param {Page} page */
async function reveal(page) {
  await page.evaluate(() => {
    document.querySelector('#tab-listen')?.dispatchEvent(new MouseEvent('click'));
  });
  await page.waitForSelector('.listen-start');
}

/**
 * Sets the page's filter and waits for its design.
 * @param {Page} page
 * @param {import('../src/session/protocol.ts').Settings} settings
 * @returns {Promise<number[]>} the published sections
 */
function design(page, settings) {
  return page.evaluate(async (wanted) => {
    const { store, shown } = window.veltane;
    const before = shown.value;
    store.replace(wanted);
    while (shown.value === before) await new Promise((later) => setTimeout(later, 5));
    const entry = shown.value?.design.dictionary.find(([key]) => key === 'cascade');
    return /** @type {number[]} */ (entry?.[1] ?? []);
  }, settings);
}

/**
 * @param {Page} page
 * @param {{ signal?: string, through?: 'off' | 'a' | 'b', match?: boolean, volume?: number }} how
 */
async function choose(page, { signal, through, match, volume }) {
  await page.evaluate(
    (how) => {
      const part = document.querySelector('.listen');
      /** @param {string} selector @param {(input: HTMLInputElement) => void} act */
      const change = (selector, act) => {
        const input = part?.querySelector(selector);
        if (!input) throw new Error(selector);
        act(/** @type {HTMLInputElement} */ (input));
        input.dispatchEvent(new Event('input', { bubbles: true }));
        input.dispatchEvent(new Event('change', { bubbles: true }));
      };
      const { signal, through, match, volume } = how;
      if (signal) change('select', (input) => (input.value = signal));
      if (through) change(`[value=${through}]`, (input) => (input.checked = true));
      if (match !== undefined) change('[type=checkbox]', (input) => (input.checked = match));
      if (volume !== undefined) change('[type=range]', (input) => (input.value = String(volume)));
    },
    { signal, through, match, volume },
  );
}

/** @param {Page} page */
async function start(page) {
  await press(page, '.listen-start');
  await page.waitForFunction(() => window.veltane.audioRate.value !== undefined);
}

/**
 * @param {Page} page  that has been started
 * @param {{ at: number, settings: import('../src/session/protocol.ts').Settings }[]} [changes]
 * @returns {Promise<Float64Array>} all samples
 */
async function record(page, changes = []) {
  const samples = await page.evaluate(async (list) => {
    const { recorder } = /** @type {{ recorder: OfflineAudioContext }} */ (
      /** @type {unknown} */ (window)
    );
    const { store, shown } = window.veltane;
    /** @param {number} ms */
    const pause = (ms) => new Promise((later) => setTimeout(later, ms));
    for (const { at, settings } of list)
      void recorder.suspend(at).then(async () => {
        const before = shown.value;
        store.replace(settings);
        while (shown.value === before) await pause(5);
        // The message has to arrive on the audio thread.
        await pause(50);
        await recorder.resume();
      });
    await pause(200);
    const buffer = await recorder.startRendering();
    return [...buffer.getChannelData(0)];
  }, changes);
  return Float64Array.from(samples);
}

/**
 * @param {TestContext} t
 * @param {Page} page
 * @param {string} name
 * @param {Uint8Array} bytes
 */
async function upload(t, page, name, bytes) {
  const folder = await mkdtemp(path.join(os.tmpdir(), 'veltane-listen-'));
  t.after(() => rm(folder, { recursive: true }));
  const file = path.join(folder, name);
  await writeFile(file, bytes);
  await choose(page, { signal: 'file' });
  const input = await page.waitForSelector('.listen input[type=file]');
  await /** @type {import('puppeteer-core').ElementHandle<HTMLInputElement>} */ (input).uploadFile(
    file,
  );
}

/** @param {Float32Array} samples */
function wave(samples) {
  const bytes = new Uint8Array(44 + 4 * samples.length);
  const view = new DataView(bytes.buffer);
  const text = (/** @type {number} */ place, /** @type {string} */ word) =>
    bytes.set(new TextEncoder().encode(word), place);
  text(0, 'RIFF');
  view.setUint32(4, bytes.length - 8, true);
  text(8, 'WAVEfmt ');
  view.setUint32(16, 16, true);
  view.setUint16(20, 3, true); // floats
  view.setUint16(22, 1, true);
  view.setUint32(24, rate, true);
  view.setUint32(28, 4 * rate, true);
  view.setUint16(32, 4, true);
  view.setUint16(34, 32, true);
  text(36, 'data');
  view.setUint32(40, 4 * samples.length, true);
  samples.forEach((sample, i) => view.setFloat32(44 + 4 * i, sample, true));
  return bytes;
}

/** @param {number} length */
function noise(length) {
  let state = 1;
  return Float32Array.from({ length }, () => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return state / 2 ** 32 - 0.5;
  });
}

/** @param {number[]} sections @param {Float32Array} input */
function filtered(sections, input) {
  const samples = Float64Array.from(input);
  for (let k = 0; k < sections.length; k += 5) {
    const [b0 = 0, b1 = 0, b2 = 0, a1 = 0, a2 = 0] = sections.slice(k, k + 5);
    // Direct form I, which is another order of the same sums.
    let [x1, x2, y1, y2] = [0, 0, 0, 0];
    samples.forEach((x, i) => {
      const y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
      [x1, x2, y1, y2] = [x, x1, y, y1];
      samples[i] = y;
    });
  }
  return samples;
}

/** @param {Iterable<number>} samples */
function rms(samples) {
  const list = [...samples];
  return Math.sqrt(list.reduce((sum, sample) => sum + sample * sample, 0) / list.length);
}

/** @param {number} ratio */
const decibels = (ratio) => 20 * Math.log10(ratio);

for (const order of [2, 5, 20])
  void test(`order ${order} sounds as it is published`, async (t) => {
    const page = await openRecorded(t, 1);
    await reveal(page);
    const sections = await design(page, { topology: ['butterworth'], order: [order] });
    const input = noise(rate);
    await upload(t, page, 'noise.wav', wave(input));
    await choose(page, { through: 'a', match: false, volume: 0 });
    await start(page);
    const heard = await record(page);
    const wanted = filtered(sections, input);
    // The sound begins with a ramp.
    const from = rate / 10;
    const error = heard.slice(from).map((sample, i) => sample - (wanted[from + i] ?? NaN));
    const level = decibels(rms(error) / rms(wanted.slice(from)));
    t.diagnostic(`the error is ${level.toFixed(1)} dB of the output`);
    assert.ok(level < -140, `${level} dB`);
  });

void test('without a filter the signal is heard unchanged, 30 dB down at first', async (t) => {
  const page = await openRecorded(t, 1);
  await reveal(page);
  const input = noise(rate);
  await upload(t, page, 'noise.wav', wave(input));
  await choose(page, { through: 'off' });
  await start(page);
  const heard = await record(page);
  const from = rate / 10;
  const error = heard
    .slice(from)
    .map((sample, i) => sample - (input[from + i] ?? NaN) * 10 ** (-30 / 20));
  assert.ok(decibels(rms(error) / rms(heard)) < -140);
});

/** @param {Float64Array} samples */
function largestStep(samples) {
  let largest = 0;
  for (let i = 1; i < samples.length; ++i)
    largest = Math.max(largest, Math.abs((samples[i] ?? 0) - (samples[i - 1] ?? 0)));
  return largest;
}

void test('a dial that turns makes no step', async (t) => {
  const seconds = 3;
  const page = await openRecorded(t, seconds);
  await reveal(page);
  const settings = (/** @type {number} */ cutoff, /** @type {number} */ order) => ({
    topology: ['butterworth'],
    order: [order],
    frequency: [cutoff],
  });
  await design(page, settings(4000, 8));
  const sine = Float32Array.from({ length: rate }, (_, i) =>
    Math.fround(0.5 * Math.sin((2 * Math.PI * 1000 * i) / rate)),
  );
  await upload(t, page, 'sine.wav', wave(sine));
  await choose(page, { through: 'a', match: false, volume: 0 });
  await start(page);
  // From all of the sine to none of it and back, of the same order and of another.
  const turns = [4000, 3000, 900, 200, 6000, 150, 8000, 500, 1000, 5000];
  const heard = await record(
    page,
    turns.map((cutoff, i) => ({
      at: 0.5 + 0.22 * i,
      settings: settings(cutoff + 1, i % 3 === 2 ? 5 : 8),
    })),
  );
  const own = Math.PI * (1000 / rate);
  const step = largestStep(heard.slice(rate / 10));
  t.diagnostic(`the largest step is ${(step / own).toFixed(4)} of the sine's own`);
  assert.ok(step < 1.01 * own, `${step} of ${own}`);
  const quiet = rms(heard.slice(0.5 * rate + 0.82 * rate, 0.5 * rate + 0.87 * rate));
  assert.ok(quiet < 0.01, `the filters were heard: ${quiet}`);
});

void test('an unstable filter is limited and muted, and the page says so', async (t) => {
  const page = await openRecorded(t, 2);
  await reveal(page);
  await design(page, {
    topology: ['butterworth'],
    response: ['bandpass'],
    frequency: [1010, 1000],
  });
  await upload(t, page, 'noise.wav', wave(noise(rate)));
  await choose(page, { through: 'a', match: false, volume: 0 });
  await start(page);
  const heard = await record(page);
  const peak = heard.reduce((most, sample) => Math.max(most, Math.abs(sample)), 0);
  assert.ok(peak <= 1, `${peak}`);
  assert.ok(peak > 0.99, 'it grew and was limited');
  assert.equal(rms(heard.slice(-rate / 2)), 0);
  await page.waitForFunction(() =>
    document.querySelector('.listen')?.textContent.includes('unstable'),
  );
});

void test('a filter that becomes unstable at once dies away', async (t) => {
  const page = await openRecorded(t, 2);
  await reveal(page);
  await upload(t, page, 'noise.wav', wave(noise(rate)));
  await choose(page, { through: 'a', match: false, volume: 0 });
  await start(page);
  const unstable = {
    topology: ['butterworth'],
    response: ['bandpass'],
    order: [20],
    frequency: [3400, 300],
  };
  const heard = await record(page, [{ at: 1, settings: unstable }]);
  const before = heard.slice(rate / 2, 0.9 * rate);
  const peak = (/** @type {Float64Array} */ samples) =>
    samples.reduce((most, sample) => Math.max(most, Math.abs(sample)), 0);
  assert.ok(rms(before) > 0.01);
  assert.ok(peak(heard.slice(0.9 * rate)) < 1.5 * peak(before), 'no louder than what was heard');
  assert.equal(rms(heard.slice(-rate / 2)), 0);
});

for (const signal of ['pink', 'white', 'sweep', 'clicks'])
  void test(`levels are matched for ${signal}`, async (t) => {
    const seconds = signal === 'sweep' ? 12 : 6;
    /** @type {number[]} */
    const levels = [];
    for (const through of /** @type {const} */ (['off', 'a'])) {
      const page = await openRecorded(t, seconds);
      await reveal(page);
      await design(page, {
        topology: ['butterworth'],
        response: ['bandpass'],
        frequency: [300, 400],
      });
      await choose(page, { through, signal });
      await start(page);
      const heard = await record(page);
      // A whole turn of the loop.
      const turn = { sweep: 2 ** 19, clicks: 5 * rate }[signal] ?? 2 ** 18;
      levels.push(decibels(rms(heard.slice(-turn))));
      await page.close();
    }
    const [off = 0, a = 0] = levels;
    t.diagnostic(`${off.toFixed(2)} dB without, ${a.toFixed(2)} dB with the filter`);
    assert.ok(Math.abs(a - off) < 0.5);
  });

void test('files that are no sound are refused in a sentence', async (t) => {
  const page = await openRecorded(t, 1);
  await reveal(page);
  await start(page);
  const name = '<img src=x onerror=alert(1)>.wav';
  await upload(t, page, name.replaceAll('/', ''), Uint8Array.of(0xff, 0xd8, 0xff, 0xe0, 0, 16));
  const said = await page.waitForFunction(
    () => document.querySelector('.listen-fault')?.textContent || undefined,
  );
  assert.equal(await said.jsonValue(), `${name} is not a sound file that this browser can read.`);
  assert.equal(await page.$('.listen img'), null);
});

void test('the space bar starts and stops, and the design follows the audio meanwhile', async (t) => {
  const page = await openRecorded(t);
  await reveal(page);
  assert.equal(await page.evaluate(() => window.veltane.audioRate.value), undefined);
  await page.evaluate(() => {
    if (document.activeElement instanceof HTMLElement) document.activeElement.blur();
  });
  await page.keyboard.press('Space');
  await page.waitForFunction(
    () =>
      window.veltane.audioRate.value !== undefined &&
      window.veltane.shown.value?.design.samplerate === window.veltane.audioRate.value,
  );
  await page.waitForFunction(() => (document.querySelector('meter')?.value ?? -80) > -79);
  await page.evaluate(() => window.veltane.store.set('samplerate', [12345]));
  const follow = await page.waitForSelector('.listen-note button');
  await page.focus('.listen select');
  await page.keyboard.press('Space');
  await page.keyboard.press('Escape');
  assert.notEqual(await page.evaluate(() => window.veltane.audioRate.value), undefined);
  await follow?.click();
  await page.waitForFunction(
    () => window.veltane.shown.value?.design.samplerate === window.veltane.audioRate.value,
  );
  await page.evaluate(() => {
    if (document.activeElement instanceof HTMLElement) document.activeElement.blur();
  });
  await page.keyboard.press('Space');
  await page.waitForFunction(() => window.veltane.audioRate.value === undefined);
});
