// Where the nodes of a part of the graph go: columns by layer, so that arrows lead to the left.

const boxHeight = 26;
const rowStep = 36;
const columnGap = 64;
const letterWidth = 7.3;
const mostForBends = 400;
const mostBends = 2000;
const mostForSettling = 3000;

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

// Adds a bend to every layer that an arrow passes, so that it goes round the boxes there. Bends have negative
// numbers. Fills who is beside whom, `before` to the left and `behind` to the right, and returns the bends of each
// arrow from left to right.
function addBends(layers, down, before, behind) {
  const layerOf = new Map(layers.flatMap((layer, index) => layer.map((node) => [node, index])));
  const all = [...down].flatMap(([from, others]) => others.filter((to) => to !== from).map((to) => [from, to]));
  const length = ([from, to]) => Math.abs(layerOf.get(from) - layerOf.get(to));
  const count = all.reduce((sum, arrow) => sum + length(arrow) - 1, 0);
  const hasBends = layerOf.size <= mostForBends && count <= mostBends;
  const bends = new Map();
  const connect = (left, right) => {
    behind.get(left).push(right);
    before.get(right).push(left);
  };
  let last = 0;
  for (const arrow of all) {
    const [left, right] = layerOf.get(arrow[0]) < layerOf.get(arrow[1]) ? arrow : [arrow[1], arrow[0]];
    const way = [left];
    for (let at = layerOf.get(left) + 1; hasBends && at < layerOf.get(right); ++at) {
      last -= 1;
      layers[at].push(last);
      before.set(last, []);
      behind.set(last, []);
      connect(way.at(-1), last);
      way.push(last);
    }
    connect(way.at(-1), right);
    bends.set(`${arrow[0]} ${arrow[1]}`, way.slice(1));
  }
  return bends;
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

// From node, or bend, to its box.
function boxesOf(columns, heights) {
  const boxes = new Map();
  let x = 0;
  for (const column of columns) {
    const width = Math.max(...column.map((item) => (item < 0 ? 0 : Array.from(labelOf(item)).length))) * letterWidth + 20;
    column.forEach((item, row) => {
      boxes.set(item, {x, y: (heights ? heights.get(item) : row - (column.length - 1) / 2) * rowStep, width});
    });
    x += width + columnGap;
  }
  return boxes;
}

// The boxes of `nodes`, with the edges `down` between them, and the bends of the arrows.
function placesOf(nodes, down) {
  const layers = layersOf(nodes);
  if (nodes.length > mostForSettling) {
    return {boxes: boxesOf(columnsOf(layers, nodes.length)), bends: new Map()};
  }
  const before = new Map(nodes.map((node) => [node, []]));
  const behind = new Map(nodes.map((node) => [node, []]));
  const bends = addBends(layers, down, before, behind);
  orderLayers(layers, before, behind);
  if (nodes.length > mostForBends) {
    return {boxes: boxesOf(columnsOf(layers, nodes.length)), bends};
  }
  return {boxes: boxesOf(layers, heightsOf(layers, before, behind)), bends};
}
