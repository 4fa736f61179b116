// Opens the built page in headless Chromium.

import { mkdtemp, rm } from 'node:fs/promises';
import os from 'node:os';
import path from 'node:path';
import process from 'node:process';
import { pathToFileURL } from 'node:url';
import puppeteer from 'puppeteer-core';

const flags = [
  '--no-sandbox',
  '--disable-gpu',
  '--disable-quic',
  '--no-first-run',
  '--disable-background-networking',
  '--disable-component-update',
  '--disable-sync',
];

/** The file that is tested. */
export const file = path.resolve(process.env.VELTANE_PAGE ?? '../build/page/veltane.html');

/**
 * @param {readonly string[]} [args]
 * @returns a browser with a profile of its own, and what closes it and takes the profile away
 */
export async function launched(args = []) {
  const profile = await mkdtemp(path.join(os.tmpdir(), 'veltane-page-'));
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
    userDataDir: profile,
    args: [...flags, ...args],
  });
  const end = async () => {
    await browser.close();
    await rm(profile, { recursive: true, force: true, maxRetries: 5 });
  };
  return { browser, end };
}

/**
 * @param {import('node:test').TestContext} t  the browser is closed with it
 * @param {{ hash?: string, width?: number, height?: number, args?: string[],
 *           before?: (page: import('puppeteer-core').Page) => Promise<void> }} [options]
 * @returns a page that has drawn its first filter, and fails the test with any error in it
 */
export async function open(t, { hash = '', width = 1280, height = 900, args = [], before } = {}) {
  const { browser, end } = await launched(args);
  /** @type {string[]} */
  const errors = [];
  t.after(async () => {
    await end();
    if (errors.length > 0) throw new Error(`errors in the page: ${errors.join('; ')}`);
  });
  const page = await browser.newPage();
  await page.setViewport({ width, height });
  page.on('pageerror', (error) => errors.push(String(error)));
  page.on('console', (message) => {
    if (message.type() === 'error') errors.push(message.text());
  });
  await before?.(page);
  await page.goto(pathToFileURL(file).href + hash);
  await page.waitForFunction(
    () => 'veltane' in window && (window.veltane.shown.value ?? window.veltane.refusal.value),
  );
  return page;
}
