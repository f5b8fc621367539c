// Mermaid's own parser and renderer on what "graph -f mermaid" writes.

import assert from 'node:assert/strict';
import {writeFileSync} from 'node:fs';
import {join} from 'node:path';
import {after, before, test} from 'node:test';

import {makeFolder, modules, openBrowser, openPage, sourceDir, startplan, startplanJson, vehicle} from './support.mjs';

let browser;
let page;
before(async () => {
  browser = await openBrowser();
  const blank = join(makeFolder(), 'blank.html');
  writeFileSync(blank, '<!DOCTYPE html><meta charset="utf-8"><title>blank</title>');
  page = await openPage(browser, blank);
  await page.addScriptTag({path: join(modules, 'mermaid/dist/mermaid.min.js')});
});
after(() => browser.close());

// The texts of the picture's nodes, ascending.
function render(chart, htmlLabels) {
  return page.evaluate(async ([text, hasHtml]) => {
    mermaid.initialize({startOnLoad: false, htmlLabels: hasHtml, flowchart: {htmlLabels: hasHtml}});
    await mermaid.parse(text);
    const {svg} = await mermaid.render('chart', text);
    document.body.innerHTML = svg;
    return [...document.querySelectorAll('.node .nodeLabel')].map((label) => label.textContent).sort();
  }, [chart, htmlLabels]);
}

const oddCase = {cwd: join(sourceDir, 'tests/tool/cases/graph-mermaid-of-odd-names')};

test('the sample tree is drawn with every application', async () => {
  const names = startplanJson(['graph', ...vehicle]).nodes.map((node) => node.name).sort();
  assert.deepEqual(await render(startplan(['graph', ...vehicle, '-f', 'mermaid', '--group-by', 'file', '--highlight', 'critical']), true), names);
});

test('odd names are drawn as they are', async () => {
  const chart = startplan(['graph', 'config/top.yaml', '-f', 'mermaid'], oddCase);
  const names = startplanJson(['graph', 'config/top.yaml'], oddCase).nodes.map((node) => node.name);
  const expected = names.map((name) => (name.length < 48 ? name.replace('\t', '\\x09').replace('\u0007', '\\x07') :
    `${name.slice(0, 24)}…${name.slice(-23)}`)).sort();
  assert.deepEqual(await render(chart, true), expected);
});

test('cycles, dropped and missing names are drawn', async () => {
  const folder = makeFolder({'config/top.yaml': 'startup_path_list: [config/apps.yaml]\n',
    'config/apps.yaml': 'a: {bin_path: /bin/a, depends: [b]}\nb: {bin_path: /bin/b, depends: [a, b]}\nc: {bin_path: /bin/c, depends: [gone]}\n'});
  const chart = startplan(['graph', 'config/top.yaml', '-f', 'mermaid', '--highlight', 'cycles'], {cwd: folder, statuses: [1]});
  assert.deepEqual(await render(chart, true), ['a', 'b', 'c', 'gone']);
});
