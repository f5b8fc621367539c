// What the tests of the pages share: the command, trees to work on, and Chromium.

import {execFileSync, spawnSync} from 'node:child_process';
import {mkdirSync, mkdtempSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {dirname, join} from 'node:path';
import {fileURLToPath, pathToFileURL} from 'node:url';

export const sourceDir = join(dirname(fileURLToPath(import.meta.url)), '../..');
export const modules = process.env.PAGE_MODULES;
const {chromium} = await import(pathToFileURL(join(modules, 'playwright-core/index.mjs')));

export const vehicle = ['-r', 'examples/vehicle/replace.yaml', 'examples/vehicle/top.yaml'];

// Runs the command in `cwd`; standard output. `statuses` are the exit statuses that are right.
export function startplan(args, {cwd = sourceDir, statuses = [0]} = {}) {
  const run = spawnSync(process.env.STARTPLAN, args, {cwd, encoding: 'utf8', maxBuffer: 1 << 28});
  if (!statuses.includes(run.status)) {
    throw new Error(`startplan ${args.join(' ')}: exit status ${run.status}\n${run.stderr}`);
  }
  return run.stdout;
}

export const startplanJson = (args, options) => JSON.parse(startplan([...args, '-f', 'json'], options));

export function makeFolder(files = {}) {
  const folder = mkdtempSync(join(tmpdir(), 'startplan-pages-'));
  for (const [name, text] of Object.entries(files)) {
    mkdirSync(dirname(join(folder, name)), {recursive: true});
    writeFileSync(join(folder, name), text);
  }
  process.on('exit', () => rmSync(folder, {recursive: true, force: true}));
  return folder;
}

export function openBrowser() {
  return chromium.launch({executablePath: execFileSync('which', ['chromium'], {encoding: 'utf8'}).trim(),
    args: ['--no-sandbox', '--disable-gpu']});
}

// A page that collects whatever goes wrong in it, and every request that it makes besides for itself.
export async function openPage(browser, file, options = {}) {
  const context = await browser.newContext({viewport: {width: 1280, height: 900}, ...options});
  const page = await context.newPage();
  page.troubles = [];
  page.on('console', (message) => {
    if (['error', 'warning'].includes(message.type())) {
      page.troubles.push(`console: ${message.text()}`);
    }
  });
  page.on('pageerror', (error) => page.troubles.push(`error: ${error.stack}`));
  page.on('dialog', (dialog) => { page.troubles.push(`dialog: ${dialog.message()}`); dialog.dismiss(); });
  const self = pathToFileURL(file).href;
  page.on('request', (request) => {
    if (request.url().split('#')[0] !== self) {
      page.troubles.push(`request: ${request.url()}`);
    }
  });
  await page.goto(self);
  return page;
}
