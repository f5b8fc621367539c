// Where the nodes of a part of the graph go: columns by layer, so that arrows lead to the left.

const boxHeight = 26;
const rowStep = 36;
const columnGap = 64;
const letterWidth = 7.3;
const sweeps = 6;
const mostForSweeps = 3000;

function labelOf(node) {
  const name = model.graph.names[node];
  const letters = Array.from(name);
  return letters.length <= 48 ? name : `${letters.slice(0, 24).join('')}…${letters.slice(-23).join('')}`;
}

// The layers that are there, each from top to bottom in the order that the whole graph has.
function layersOf(nodes) {
  const layers = new Map();
  for (const node of nodes) {
    const layer = model.graph.layers[node];
    if (!layers.has(layer)) {
      layers.set(layer, []);
    }
    layers.get(layer).push(node);
  }
  const sorted = [...layers.keys()].sort((a, b) => a - b).map((layer) => layers.get(layer));
  sorted.forEach((layer) => layer.sort((a, b) => model.graph.places[a] - model.graph.places[b]));
  return sorted;
}

// Moves each node to the middle of its neighbours, from left to right and back.
function settle(layers, down, up) {
  const heights = new Map();
  const spread = (layer) => layer.forEach((node, i) => heights.set(node, i - (layer.length - 1) / 2));
  layers.forEach(spread);
  for (let sweep = 0; sweep < sweeps; ++sweep) {
    const isForwards = sweep % 2 === 0;
    for (const layer of isForwards ? layers : [...layers].reverse()) {
      const wanted = new Map(layer.map((node) => {
        const others = (isForwards ? down : up).get(node);
        const sum = others.reduce((so, other) => so + heights.get(other), 0);
        return [node, others.length === 0 ? heights.get(node) : sum / others.length];
      }));
      layer.sort((a, b) => wanted.get(a) - wanted.get(b));
      spread(layer);
    }
  }
}

// A layer that is much higher than the picture is wide takes several columns.
function columnsOf(layers, count) {
  const most = Math.max(24, Math.ceil(2 * Math.sqrt(count)));
  return layers.flatMap((layer) => {
    const parts = Math.ceil(layer.length / most);
    const rows = Math.ceil(layer.length / parts);
    return Array.from({length: parts}, (unused, part) => layer.slice(part * rows, (part + 1) * rows));
  });
}

// From node to its box, for `nodes` with the edges `down` and `up` between them.
function placesOf(nodes, down, up) {
  const layers = layersOf(nodes);
  if (nodes.length <= mostForSweeps) {
    settle(layers, down, up);
  }
  const boxes = new Map();
  let x = 0;
  for (const column of columnsOf(layers, nodes.length)) {
    const width = Math.max(...column.map((node) => Array.from(labelOf(node)).length)) * letterWidth + 20;
    column.forEach((node, row) => {
      boxes.set(node, {x, y: (row - (column.length - 1) / 2) * rowStep, width});
    });
    x += width + columnGap;
  }
  return boxes;
}
