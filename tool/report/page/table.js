// The table of applications: searched, sorted, a page at a time.

const rowsAtOnce = 100;
const table = {
  columns: ['name', 'bin_path', 'uid', 'gid', 'restart', 'depends', 'file'],
  sort: '',
  isDescending: false,
  rows: [], // applications, as found and sorted
  first: 0,
  chosen: -1,
};

const columnNamed = new Map(columns.map((column) => [column.name, column]));

// Which applications a word is found in. Each different value is looked at once, not each application's.
function markFound(word, isFound) {
  const colon = word.indexOf(':');
  const named = colon > 0 ? columnNamed.get(word.slice(0, colon)) : undefined;
  const text = named ? word.slice(colon + 1) : word;
  const found = new Uint8Array(isFound.length);
  for (const column of named ? [named] : columns) {
    const matches = column.values.map((value) => value.toLowerCase().includes(text));
    if (!matches.includes(true)) {
      continue;
    }
    if (column.of === undefined) {
      return;
    }
    for (let app = 0; app < found.length; ++app) {
      found[app] |= matches[column.of[app]] ? 1 : 0;
    }
  }
  found.forEach((isHit, app) => { isFound[app] &= isHit; });
}

function compareBy(column) {
  const order = column.values.map((value, index) => index);
  if (column.number) {
    order.sort((a, b) => Number(column.values[a]) - Number(column.values[b]));
  } else {
    const collator = new Intl.Collator('en', {numeric: true});
    order.sort((a, b) => collator.compare(column.values[a], column.values[b]));
  }
  const rank = [];
  order.forEach((value, place) => { rank[value] = place; });
  return (a, b) => rank[valueNumber(column, a)] - rank[valueNumber(column, b)];
}

function findRows() {
  const words = byId('search').value.toLowerCase().split(/\s+/).filter((word) => word !== '');
  const isFound = new Uint8Array(model.applications.count).fill(1);
  words.forEach((word) => markFound(word, isFound));
  table.rows = [];
  isFound.forEach((isHit, app) => {
    if (isHit) {
      table.rows.push(app);
    }
  });
  if (table.sort !== '') {
    const compare = compareBy(columnNamed.get(table.sort));
    table.rows.sort((a, b) => (table.isDescending ? compare(b, a) : compare(a, b)));
  }
  table.first = 0;
  showRows();
  say(`${counted(table.rows.length, 'application', 'applications')} found`);
}

function sortBy(name) {
  table.isDescending = table.sort === name && !table.isDescending;
  table.sort = name;
  findRows();
  byId('table').querySelector(`th[data-column="${name}"] button`).focus();
}

function cellOf(column, app) {
  const text = valueOf(column, app);
  if (column.name !== 'name') {
    return make('td', {class: column.number ? 'number' : undefined, title: text}, text);
  }
  const node = model.applications.nodes[app];
  const button = make('button', {type: 'button', class: 'name', onclick: () => choose(node, app)}, text);
  return make('td', {title: text}, button);
}

function showRows(count = rowsAtOnce) {
  const shown = columns.filter((column) => table.columns.includes(column.name));
  const head = shown.map((column) => {
    const sort = table.sort !== column.name ? 'none' : (table.isDescending ? 'descending' : 'ascending');
    return make('th', {scope: 'col', 'aria-sort': sort, 'data-column': column.name},
      make('button', {type: 'button', onclick: () => sortBy(column.name)}, column.name));
  });
  const rows = table.rows.slice(table.first, table.first + count).map((app) => make('tr',
    {class: app === table.chosen ? 'chosen' : undefined, 'data-app': app}, ...shown.map((column) => cellOf(column, app))));
  byId('table').tHead.replaceChildren(make('tr', {}, ...head));
  byId('table').tBodies[0].replaceChildren(...rows);
  byId('table').setAttribute('aria-rowcount', table.rows.length + 1);
  byId('hits').textContent = `${table.rows.length.toLocaleString('en')} of ` +
    counted(model.applications.count, 'application', 'applications');
  byId('range').textContent = table.rows.length === 0 ? 'nothing found' :
    `${table.first + 1} to ${Math.min(table.first + count, table.rows.length)}`;
  byId('previous').disabled = table.first === 0;
  byId('next').disabled = table.first + count >= table.rows.length;
}

// Without making the rows anew, which would take the keyboard's place away.
function markChosen(app) {
  table.chosen = app;
  for (const row of byId('table').tBodies[0].rows) {
    row.classList.toggle('chosen', row.dataset.app === String(app));
  }
}

function turnPage(step) {
  table.first = Math.max(0, table.first + step * rowsAtOnce);
  showRows();
  say(`Applications ${byId('range').textContent}`);
}

function startTable() {
  for (const column of columns) {
    const box = make('input', {type: 'checkbox', checked: table.columns.includes(column.name)});
    box.addEventListener('change', () => {
      table.columns = table.columns.filter((name) => name !== column.name);
      if (box.checked) {
        table.columns.push(column.name);
      }
      showRows();
    });
    byId('columns').append(make('label', {}, box, ` ${column.name}`));
  }
  byId('search').addEventListener('input', later(30, findRows));
  byId('previous').addEventListener('click', () => turnPage(-1));
  byId('next').addEventListener('click', () => turnPage(1));
  findRows();
}
