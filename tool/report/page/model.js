// The data of the page, and what is looked up in it.

const model = JSON.parse(byId('data').textContent);

// Edges come as pairs of numbers, one after the other: of each node the nodes that it waits for, or, turned
// round, that wait for it.
function adjacency(edges, isTurned) {
  const lists = model.graph.names.map(() => []);
  for (let i = 0; i < edges.length; i += 2) {
    const [from, to] = isTurned ? [edges[i + 1], edges[i]] : [edges[i], edges[i + 1]];
    lists[from].push(to);
  }
  return lists;
}

const needs = adjacency(model.graph.edges, false);
const neededBy = adjacency(model.graph.edges, true);
const patternNodes = new Set(model.graph.patterns);
const columns = model.applications.columns;

function valueNumber(column, app) {
  return column.of === undefined ? 0 : column.of[app];
}

function valueOf(column, app) {
  return column.values[valueNumber(column, app)];
}

// The node with that name; the first one that contains it; -1 for none.
function findNode(text) {
  const names = model.graph.names;
  const exact = names.indexOf(text);
  if (exact >= 0 || text === '') {
    return exact;
  }
  const wanted = text.toLowerCase();
  return names.findIndex((name) => name.toLowerCase().includes(wanted));
}

// In which round each node is handed out, by request.
function roundsOf(request) {
  const rounds = new Map();
  request.rounds.forEach((names, index) => names.forEach((node) => rounds.set(node, index + 1)));
  return rounds;
}

const startRounds = roundsOf(model.start);
const stopRounds = roundsOf(model.stop);
const stateTexts = ['', 'dropped', 'not configured'];
