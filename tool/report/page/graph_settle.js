// Orders the layers of a graph and finds heights for their items, so that arrows are short and seldom cross.

const sweeps = 8;
const bendRoom = 0.3; // a box takes 1

const roomOf = (item) => (item < 0 ? bendRoom : 1);

// Heights of a layer's items, one under the other around the middle.
function stack(layer, heights) {
  let at = -layer.reduce((sum, item) => sum + roomOf(item), 0) / 2;
  for (const item of layer) {
    heights.set(item, at + roomOf(item) / 2);
    at += roomOf(item);
  }
}

function wantedHeight(item, neighbours, heights) {
  const others = neighbours.get(item);
  return others.length === 0 ? heights.get(item) :
    others.reduce((sum, other) => sum + heights.get(other), 0) / others.length;
}

// Calls `work` for each layer with its neighbours' side, from left to right and back in turn.
function sweepOver(layers, before, behind, work) {
  for (let sweep = 0; sweep < sweeps; ++sweep) {
    const isForwards = sweep % 2 === 0;
    for (const layer of isForwards ? layers : [...layers].reverse()) {
      work(layer, isForwards ? before : behind);
    }
  }
}

// Moves each item to the middle of its neighbours.
function orderLayers(layers, before, behind) {
  const heights = new Map();
  layers.forEach((layer) => stack(layer, heights));
  sweepOver(layers, before, behind, (layer, neighbours) => {
    const wanted = new Map(layer.map((item) => [item, wantedHeight(item, neighbours, heights)]));
    layer.sort((a, b) => wanted.get(a) - wanted.get(b));
    stack(layer, heights);
  });
}

// The least sum of squares from the wanted heights: items that would overlap become one block, which goes to the
// mean of what its items want.
function fit(layer, wanted, heights) {
  const blocks = [];
  const offsets = [];
  let offset = 0;
  layer.forEach((item, i) => {
    offset += i === 0 ? 0 : (roomOf(layer[i - 1]) + roomOf(item)) / 2;
    offsets.push(offset);
    let block = {sum: wanted(item) - offset, count: 1, end: i + 1};
    while (blocks.length > 0 && blocks.at(-1).sum / blocks.at(-1).count > block.sum / block.count) {
      const above = blocks.pop();
      block = {sum: above.sum + block.sum, count: above.count + block.count, end: block.end};
    }
    blocks.push(block);
  });
  let i = 0;
  for (const block of blocks) {
    for (; i < block.end; ++i) {
      heights.set(layer[i], block.sum / block.count + offsets[i]);
    }
  }
}

function heightsOf(layers, before, behind) {
  const heights = new Map();
  layers.forEach((layer) => stack(layer, heights));
  sweepOver(layers, before, behind, (layer, neighbours) => {
    fit(layer, (item) => wantedHeight(item, neighbours, heights), heights);
  });
  return heights;
}
