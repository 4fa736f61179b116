// What tests of the page do again and again.

/** @typedef {import('puppeteer-core').Page} Page */

/**
 * JSON of which nothing is known yet.
 * @type {(text: string) => unknown}
 */
export const parsed = JSON.parse;

/**
 * Waits until what is set is what is shown.
 * @param {Page} page
 */
export async function designed(page) {
  await page.waitForFunction(() => {
    const { shown, store } = window.veltane;
    return JSON.stringify(shown.value?.asked) === JSON.stringify(store.state.value.settings);
  });
}

/**
 * @param {Page} page
 * @returns the settings of the box that was designed last
 */
export async function boxSettings(page) {
  await designed(page);
  return page.evaluate(() => window.veltane.shown.value?.design.settings ?? {});
}

/**
 * Begins again from a fresh box, in one step.
 * @param {Page} page
 * @param {import('../src/session/protocol.ts').Settings} [settings]
 */
export async function begin(page, settings = {}) {
  await page.evaluate((wanted) => {
    window.veltane.store.settle();
    window.veltane.store.open({ settings: wanted, view: {} });
    window.veltane.store.settle();
    window.veltane.notice.set('');
  }, settings);
  await designed(page);
}

/**
 * Types into a field as a user does, in place of what it holds.
 * @param {Page} page
 * @param {string} selector
 * @param {string} text
 */
export async function type(page, selector, text) {
  await page.focus(selector);
  await page.$eval(selector, (field) => /** @type {HTMLInputElement} */ (field).select());
  await page.keyboard.type(text);
  await page.keyboard.press('Enter');
}

/**
 * Presses what stands below the verdict. Not by the mouse: a verdict that arrives moves it.
 * @param {Page} page
 * @param {string} selector
 */
export async function press(page, selector) {
  await page.waitForSelector(selector);
  await page.$eval(selector, (button) => /** @type {HTMLElement} */ (button).click());
}

/**
 * @param {Page} page
 * @param {string} selector
 */
export function textOf(page, selector) {
  return page.$eval(selector, (found) => found.textContent ?? '');
}

/**
 * @param {Page} page
 * @param {string} selector
 */
export function valueOf(page, selector) {
  return page.$eval(selector, (field) => /** @type {HTMLInputElement} */ (field).value);
}

/**
 * Keeps what the page copies.
 * @param {Page} page
 * @returns a function that gives what was copied last
 */
export async function catchCopies(page) {
  await page.evaluate(() => {
    const caught = { text: '' };
    Object.assign(window, { caught });
    navigator.clipboard.writeText = (text) => {
      caught.text = text;
      return Promise.resolve();
    };
  });
  return () =>
    page.evaluate(
      () =>
        /** @type {{ caught: { text: string } }} */ (/** @type {unknown} */ (window)).caught.text,
    );
}
