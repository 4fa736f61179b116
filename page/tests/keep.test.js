// Saved designs on the page, and the command that makes the same.

import assert from 'node:assert/strict';
import { mkdtemp, readFile, readdir, rm, writeFile } from 'node:fs/promises';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { open } from './browser.js';
import { begin, boxSettings, catchCopies, designed, parsed, textOf } from './steps.js';

/** @typedef {import('puppeteer-core').Page} Page */

/**
 * Drops a file onto the page.
 * @param {Page} page
 * @param {string} name
 * @param {string | number} content  a text, or a size in bytes
 */
async function drop(page, name, content) {
  await page.evaluate(
    (its, holds) => {
      const part = typeof holds === 'number' ? new Uint8Array(holds).fill(0xff) : holds;
      const carried = new DataTransfer();
      carried.items.add(new File([part], its));
      const event = { dataTransfer: carried, bubbles: true, cancelable: true };
      document.body.dispatchEvent(new DragEvent('dragover', event));
      document.body.dispatchEvent(new DragEvent('drop', event));
    },
    name,
    content,
  );
}

/** @param {Page} page */
async function noticed(page) {
  await page.waitForFunction(() => window.veltane.notice.value !== '');
  return textOf(page, '.notice p');
}

/** @param {Page} page @param {string} folder */
async function keepDownloads(page, folder) {
  const client = await page.createCDPSession();
  await client.send('Browser.setDownloadBehavior', { behavior: 'allow', downloadPath: folder });
}

/** @param {string} folder @returns the first file that is saved there, whole */
async function saved(folder) {
  for (let turn = 0; turn < 1500; ++turn) {
    const [name] = (await readdir(folder)).filter((file) => !file.endsWith('.crdownload'));
    if (name !== undefined && !name.startsWith('.')) {
      const text = await readFile(path.join(folder, name), 'utf8');
      if (text !== '') return { name, text };
    }
    await new Promise((done) => setTimeout(done, 20));
  }
  throw new Error('nothing was saved');
}

void test('saved designs', async (t) => {
  const folder = await mkdtemp(path.join(os.tmpdir(), 'veltane-saved-'));
  t.after(() => rm(folder, { recursive: true }));
  const page = await open(t);
  await keepDownloads(page, folder);
  const settings = { order: [8], response: ['bandpass'], frequency: [300.25, 3400] };

  await t.test('are saved, and opened by dropping them', async () => {
    await begin(page, settings);
    const box = await boxSettings(page);
    await page.locator('#inspector button[title^="Save"]').click();
    const file = await saved(folder);
    assert.equal(file.name, 'bandpass_300_25_3400.json');
    const { command, dictionary } =
      /** @type {{ command: string[], dictionary: { cascade: number[] } }} */ (parsed(file.text));
    assert.deepEqual(command.slice(0, 4), ['veltane', 'design', '--format', 'json']);
    assert.deepEqual(
      dictionary.cascade,
      await page.evaluate(
        () => window.veltane.shown.value?.design.dictionary.find(([key]) => key === 'cascade')?.[1],
      ),
    );
    await begin(page);
    await drop(page, file.name, file.text);
    await page.waitForFunction(() => window.veltane.settings().order?.[0] === 8);
    assert.deepEqual({ ...(await boxSettings(page)), name: box.name }, box);
    assert.deepEqual(
      await page.evaluate(() => window.veltane.store.state.value.settings),
      settings,
    );
    await page.locator('header button[title^="Undo"]').click();
    assert.deepEqual((await boxSettings(page)).order, [5]);
  });

  await t.test('are opened by a button', async () => {
    await begin(page);
    const name = path.join(folder, 'chosen.json');
    await writeFile(name, '{"settings": {"order": 12, "topology": "butterworth"}}');
    const [chooser] = await Promise.all([
      page.waitForFileChooser(),
      page.locator('#inspector button[title^="Open"]').click(),
    ]);
    await chooser.accept([name]);
    await page.waitForFunction(() => window.veltane.settings().order?.[0] === 12);
    assert.deepEqual((await boxSettings(page)).topology, ['butterworth']);
    assert.equal(await textOf(page, '#status'), "Opened 'chosen.json'.");
  });

  await t.test('are not what other files are', async () => {
    const script = '<script>document.title=1</script>';
    for (const [name, content, said] of /** @type {const} */ ([
      ['photo.jpg', '\u00ff\u00d8\u00ff\u00e0\0\u0010JFIF', /^'photo\.jpg' is not a saved design/],
      ['large.json', 100_000_000, /^'large\.json' is larger than any saved design/],
      ['broken.json', '{"settings": {"order": 8', /^'broken\.json' is not JSON/],
      ['empty.json', '', /^'empty\.json' is not a saved design/],
      ['list.json', '[1, 2]', /^'list\.json' is not a saved design/],
      ['other.json', '{"name": "npm"}', /has no "settings"/],
      ['wrong.json', '{"settings": {"order": "many"}}', /'order' takes an integer, not 'many'/],
      ['wrong.json', '{"settings": {"__proto__": 1}}', /there is no setting '__proto__'/],
      [`${script}.json`, '{', new RegExp(`^'${script}.json' is not JSON`)],
      ['x.json', `{"settings": {"topology": "${script}"}}`, /topology cannot be '<script>/],
      ['gpj.\u202eexe.json', 'x', /^'gpj\.\?exe\.json' is not/],
      [`${'long'.repeat(100)}.json`, 'x', /^'(long){15}…' is not/],
    ])) {
      await begin(page);
      await drop(page, name, content);
      const sentence = await noticed(page);
      assert.match(sentence, said);
      assert.doesNotMatch(sentence, /\n/);
      assert.deepEqual(await page.evaluate(() => window.veltane.store.state.value.settings), {});
    }
    assert.notEqual(await page.title(), '1');
    assert.equal(await page.$('body script:not([type])'), null);
  });
});

void test('the command makes the same', async (t) => {
  const page = await open(t);
  await begin(page, {
    order: [8],
    topology: ['chebyshev-1'],
    response: ['bandstop'],
    frequency: [48, 52],
  });
  const copied = await catchCopies(page);
  await page.locator('#inspector .command-line button').click();
  assert.equal(
    await copied(),
    'veltane design --topology chebyshev-1 --response bandstop --order 8 --frequency 48 52',
  );
  assert.equal(await textOf(page, '#status'), 'Copied the command that makes this.');
  await begin(page, { order: [3] });
  await designed(page);
  assert.equal(await textOf(page, '#inspector .command'), 'veltane design --order 3');
});
