// The report's page in Chromium: what it shows agrees with what the other commands say, and it can be used with
// mouse and keyboard, in light and dark, and without D3.

import assert from 'node:assert/strict';
import {readFileSync, writeFileSync} from 'node:fs';
import {join} from 'node:path';
import {after, before, beforeEach, describe, test} from 'node:test';

import {makeFolder, modules, openBrowser, openPage, startplan, startplanJson, vehicle} from './support.mjs';

let browser;
before(async () => { browser = await openBrowser(); });
after(() => browser.close());

const rowCount = (page) => page.locator('#table tbody tr').count();
const transform = (page) => page.locator('#picture > g').getAttribute('transform');

async function search(page, text) {
  await page.fill('#search', text);
  await page.waitForFunction((wanted) => document.getElementById('said').textContent.endsWith('found') &&
    document.getElementById('search').value === wanted, text);
  await page.waitForTimeout(80); // the search waits for a pause in the typing
}

// Of the graph as it is shown: the names of its boxes, ascending.
const shownNames = (page) => page.locator('#picture .node title').allTextContents().then((names) => names.sort());

async function clickNode(page, name) {
  await page.locator('#picture .node', {has: page.locator('title', {hasText: new RegExp(`^${name}$`)})}).click();
  await page.waitForFunction((wanted) => document.querySelector('#picture .chosen title')?.textContent === wanted, name);
}

describe('the report of the sample tree', () => {
  const folder = makeFolder();
  const file = join(folder, 'report.html');
  let page;
  before(() => startplan(['report', ...vehicle, '-o', file]));
  beforeEach(async () => { page = await openPage(browser, file); });

  const check = (name, body) => test(name, async () => {
    await body();
    assert.deepEqual(page.troubles, []);
    await page.context().close();
  });

  check('loads without a console line and without a request', async () => {
    assert.match(await page.title(), /examples\/vehicle\/top.yaml/);
    const list = startplanJson(['list', ...vehicle]);
    assert.match(await page.textContent('#summary'), new RegExp(`^${list.applications.length} applications, ${list.files_read} files`));
  });

  check('a script in the page cannot reach the network', async () => {
    const outcome = await page.evaluate(() => fetch('https://example.com/').then(() => 'reached', () => 'refused'));
    assert.equal(outcome, 'refused');
    assert.equal(page.troubles.length > 0, true); // the browser's own remark about it
    page.troubles.length = 0;
  });

  check('a search narrows the table', async () => {
    const names = startplanJson(['list', ...vehicle]).applications.map((app) => app.name);
    assert.equal(await rowCount(page), Math.min(100, names.length));
    await search(page, 'name:camera');
    const cameras = names.filter((name) => name.includes('camera'));
    assert.equal(await rowCount(page), cameras.length);
    assert.deepEqual(await page.locator('#table tbody button.name').allTextContents(), cameras);
    await search(page, 'no such thing');
    assert.equal(await rowCount(page), 0);
    await search(page, '');
    assert.match(await page.textContent('#hits'), new RegExp(`^${names.length} of ${names.length} `));
  });

  check('a search looks into the settings', async () => {
    const apps = startplanJson(['list', ...vehicle]).applications;
    const wanted = apps.filter((app) => app.restart === 'on-forever' && app.file.includes('perception'));
    assert.notEqual(wanted.length, 0);
    await search(page, 'restart:on-forever file:perception');
    assert.equal(await rowCount(page), wanted.length);
  });

  check('the table is sorted by a column, both ways', async () => {
    const uids = async () => (await page.locator('#table tbody td.number:nth-child(3)').allTextContents()).map(Number);
    await page.click('th[data-column=uid] button');
    assert.equal(await page.getAttribute('th[data-column=uid]', 'aria-sort'), 'ascending');
    const up = await uids();
    assert.deepEqual(up, [...up].sort((a, b) => a - b));
    await page.keyboard.press('Enter'); // the focus has stayed on the heading
    assert.equal(await page.getAttribute('th[data-column=uid]', 'aria-sort'), 'descending');
    const down = await uids();
    assert.deepEqual(down, [...down].sort((a, b) => b - a));
    assert.notEqual(down[0], down.at(-1));
  });

  check('every setting can be a column, and is in the details', async () => {
    const settings = startplanJson(['show', ...vehicle, 'object_detector']).applications[0].settings;
    await page.click('#column-choice summary');
    for (const box of await page.locator('#columns input').all()) {
      await box.check();
    }
    assert.deepEqual(await page.locator('#table th').allTextContents(), settings.map((one) => one.name));
    await search(page, 'name:object_detector');
    await page.click('#table button.name');
    assert.deepEqual(await page.locator('#details dt').allTextContents(), settings.map((one) => one.name));
    const binPath = settings.find((one) => one.name === 'bin_path').value;
    assert.equal(await page.locator('#details dd').nth(1).textContent(), binPath);
    await page.keyboard.press('Escape');
    assert.equal(await page.isVisible('#details'), false);
    assert.equal(await page.evaluate(() => document.activeElement.textContent), 'object_detector');
  });

  check('a click on a node focuses it', async () => {
    const all = await shownNames(page);
    assert.equal(all.length, startplanJson(['graph', ...vehicle]).nodes.length);
    await clickNode(page, 'clock_sync');
    const near = startplanJson(['graph', ...vehicle, '--focus', 'clock_sync', '--depth', '2']).nodes;
    assert.deepEqual(await shownNames(page), near.map((node) => node.name).sort());
    assert.ok(near.length < all.length);
    await page.click('#whole');
    await page.waitForFunction((count) => document.querySelectorAll('#picture .node').length === count, all.length);
    await page.goBack();
    await page.waitForFunction(() => document.querySelector('#picture .chosen title')?.textContent === 'clock_sync');
  });

  check('depth, direction and reduction agree with the graph command', async () => {
    await page.fill('#find', 'odometry');
    await page.keyboard.press('Enter');
    await page.waitForFunction(() => document.querySelector('#picture .chosen title')?.textContent === 'odometry');
    for (const [way, depth] of [['up', '1'], ['down', '3'], ['both', '0'], ['down', '0']]) {
      await page.selectOption('#way', way);
      await page.selectOption('#depth', depth);
      const args = ['graph', ...vehicle, '--focus', 'odometry', '--direction', way];
      const {nodes, edges} = startplanJson(depth === '0' ? args : [...args, '--depth', depth]);
      assert.deepEqual(await shownNames(page), nodes.map((node) => node.name).sort());
      assert.match(await page.textContent('#graph-note'), new RegExp(`: ${nodes.length} applications?, ${edges.length} arrows?`));
    }
  });

  check('the graph is moved and zoomed by mouse, wheel and buttons', async () => {
    await page.locator('#graph').scrollIntoViewIfNeeded();
    const box = await page.locator('#picture').boundingBox();
    const seen = new Set([await transform(page)]);
    await page.mouse.move(box.x + box.width / 2, box.y + 5);
    await page.mouse.down();
    await page.mouse.move(box.x + box.width / 2 + 80, box.y + 45, {steps: 4});
    await page.mouse.up();
    seen.add(await transform(page));
    await page.mouse.wheel(0, -300);
    await page.waitForTimeout(100);
    seen.add(await transform(page));
    await page.click('#closer');
    seen.add(await transform(page));
    assert.equal(seen.size, 4);
    await page.click('#fit');
  });

  check('the keyboard alone walks the graph', async () => {
    await page.focus('#picture');
    await page.keyboard.press('ArrowRight');
    const first = await page.evaluate(() => document.activeElement.getAttribute('aria-label'));
    assert.match(first, /depends on \d+, needed by \d+/);
    await page.fill('#find', 'clock_sync');
    await page.keyboard.press('Enter');
    await page.waitForFunction(() => document.activeElement.querySelector('title')?.textContent === 'clock_sync');
    await page.keyboard.press('ArrowLeft');
    assert.equal(await page.evaluate(() => document.activeElement.querySelector('title').textContent), 'time_source');
    await page.keyboard.press('Enter');
    await page.waitForFunction(() => document.querySelector('#picture .chosen title').textContent === 'time_source');
    const before = await transform(page);
    await page.keyboard.press('+');
    assert.notEqual(await transform(page), before);
  });

  check('the rounds are those of plan', async () => {
    for (const kind of ['start', 'stop']) {
      const {rounds} = startplanJson(['plan', kind, ...vehicle, '--all']);
      const shown = page.locator(`#${kind}-rounds details`);
      assert.equal(await shown.count(), rounds.length);
      for (let i = 0; i < rounds.length; ++i) {
        assert.deepEqual(await shown.nth(i).locator('button.name').allTextContents(), rounds[i]);
      }
    }
  });

  check('the time line has a row for each step in view and a scale', async () => {
    const count = startplanJson(['plan', 'stop', ...vehicle, '--all']).rounds.flat().length;
    await page.selectOption('#which', 'stop');
    assert.equal(await page.getAttribute('.step >> nth=0', 'aria-setsize'), String(count));
    assert.match(await page.textContent('#makespan'), /All done after \d/);
    assert.ok(await page.locator('#axis span').count() >= 3);
    await page.check('#critical');
    assert.equal(await page.locator('.step:not(.critical)').count(), 0);
    assert.ok(await page.locator('.step.critical').count() > 1);
    await page.uncheck('#critical');
    await page.locator('#steps').evaluate((element) => { element.scrollTop = element.scrollHeight; });
    await page.waitForSelector(`.step[aria-posinset="${count}"]`);
  });

  check('the findings are those of check', async () => {
    const findings = startplanJson(['check', ...vehicle], {statuses: [0, 1]}).findings;
    const shown = await page.locator('#finding-list li p:first-child code').allTextContents();
    assert.deepEqual(shown, findings.slice(0, 200).map((finding) => `[${finding.rule}]`));
  });

  for (const colorScheme of ['light', 'dark']) {
    check(`no rule of accessibility is broken, ${colorScheme}`, async () => {
      await page.emulateMedia({colorScheme});
      await page.click('#table tbody tr:nth-child(3) button.name');
      // As a test, not as part of the page: the page's own policy holds scripts back that are added to it.
      await page.evaluate(readFileSync(join(modules, 'axe-core/axe.min.js'), 'utf8'));
      const {violations, passes} = await page.evaluate(() => axe.run());
      assert.deepEqual(violations.map((one) => `${one.id}: ${one.nodes.map((node) => node.html).join(' ')}`), []);
      assert.ok(passes.length > 20);
    });
  }

  check('dark is dark and light is light', async () => {
    const brightness = async (colorScheme) => {
      await page.emulateMedia({colorScheme});
      const color = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
      return color.match(/\d+/g).slice(0, 3).reduce((sum, part) => sum + Number(part), 0);
    };
    assert.ok(await brightness('light') > 700);
    assert.ok(await brightness('dark') < 100);
  });

  check('printing shows every row and no controls', async () => {
    const pages = (await page.pdf()).toString('latin1').match(/\/Type \/Page\b/g).length;
    assert.ok(pages >= 3);
    await page.emulateMedia({media: 'print'});
    await page.evaluate(() => window.dispatchEvent(new Event('beforeprint')));
    assert.equal(await page.isVisible('#search'), false);
    assert.equal(await rowCount(page), startplanJson(['list', ...vehicle]).applications.length);
    await page.evaluate(() => window.dispatchEvent(new Event('afterprint')));
  });

  check('the licences of the library that is part of the page can be read', async () => {
    await page.click('#licence summary');
    const text = await page.textContent('#licence pre');
    assert.match(text, /Redistribution and use in source and binary forms/);
    assert.match(text, /Raymond Hill/); // of one of its parts
    assert.match(text, /License: ISC/); // of another
  });
});

describe('the report without D3', () => {
  test('moves by buttons and keys, and says so', async () => {
    const file = join(makeFolder(), 'report.html');
    const html = startplan(['report', ...vehicle]);
    const bare = html.replace(/(<script id="library">)[^]*?(<\/script>)/, '$1$2');
    assert.ok(bare.length < html.length - 100000);
    writeFileSync(file, bare);
    const page = await openPage(browser, file);
    const seen = new Set([await transform(page)]);
    await page.click('#closer');
    seen.add(await transform(page));
    await page.focus('#picture');
    await page.keyboard.press('-');
    await page.keyboard.press('-');
    seen.add(await transform(page));
    assert.equal(seen.size, 3);
    assert.match(await page.textContent('#library-note'), /Built without D3/);
    await clickNode(page, 'clock_sync');
    assert.deepEqual(page.troubles, []);
    await page.context().close();
  });
});

describe('the report of hostile names', () => {
  const names = ['<script>alert(1)</script>', '</script><img src=x onerror=alert(2)>', '<!--<script>', '"quoted" \'s',
    'back\\slash', '&lt;entity&amp;', 'dev_<1-3,5>', 'grüße_日本_🚗', '@DATA@', '__proto__', 'bell\u0007', `long_${'x'.repeat(995)}`];
  const entry = (name, i) => `${JSON.stringify(name)}: {bin_path: ${JSON.stringify(`/bin/${name}`)}, depends: [${i > 0 ? JSON.stringify(names[i - 1]) : ''}]}\n`;

  test('shows them as text', async () => {
    const folder = makeFolder({'config/top.yaml': 'startup_path_list: [config/apps.yaml]\n', 'config/apps.yaml': names.map(entry).join('')});
    startplan(['report', 'config/top.yaml', '-o', 'report.html', '--title', '<b>bold</b>'], {cwd: folder, statuses: [0, 1]});
    const page = await openPage(browser, join(folder, 'report.html'));
    const printable = names.map((name) => name.replace('\u0007', '\\x07'));
    assert.equal(await page.textContent('h1'), '<b>bold</b>');
    assert.deepEqual(await page.locator('#table tbody button.name').allTextContents(), printable);
    assert.deepEqual(await shownNames(page), [...printable].sort());
    assert.equal(await page.locator('main img, main script, h1 b').count(), 0);
    for (const name of [printable[0], printable[1], printable[9], printable[11]]) {
      await page.fill('#find', name);
      await page.keyboard.press('Enter');
      await page.waitForFunction((wanted) => document.querySelector('#picture .chosen title')?.textContent === wanted, name);
    }
    await page.locator('#table tbody button.name').nth(1).click();
    assert.equal(await page.textContent('#details-title'), printable[1]);
    assert.deepEqual(page.troubles, []);
    await page.context().close();
  });
});

describe('the report of a tree that is wrong', () => {
  test('shows what is dropped, missing and on a cycle', async () => {
    const folder = makeFolder({'config/top.yaml': 'startup_path_list: [config/apps.yaml]\n',
      'config/apps.yaml': 'a: {bin_path: /bin/a, depends: [b]}\nb: {bin_path: /bin/b, depends: [a]}\n' +
        'c: {bin_path: /bin/c, depends: [gone]}\nd: {bin_path: /bin/d, depends: [a]}\n'});
    startplan(['report', 'config/top.yaml', '-o', 'report.html'], {cwd: folder, statuses: [1]});
    const page = await openPage(browser, join(folder, 'report.html'));
    assert.match(await page.textContent('#summary'), /1 application dropped.*PARSE_ERR_DEPEND_NOT_FOUND/);
    assert.match(await page.textContent('#start-rounds'), /A cycle: nothing is handed out. a waits for b waits for a/);
    assert.match(await page.textContent('#makespan'), /Nothing is handed out/);
    assert.equal(await page.locator('#picture .absent').count(), 2);
    const errors = startplanJson(['check', 'config/top.yaml'], {cwd: folder, statuses: [1]}).summary.errors;
    assert.notEqual(errors, 0);
    assert.equal(await page.locator('#finding-list li.error').count(), errors);
    assert.deepEqual(page.troubles, []);
    await page.context().close();
  });
});
