// The graph: a part of it, or the whole, drawn, moved and searched.

const mostBoxes = 500;
const mostArrows = 3000;
const graph = {
  focus: -1,
  nodes: [],
  boxes: new Map(),
  bends: new Map(), // of each arrow, "from to": from left to right
  down: new Map(), // of each shown node the shown nodes that it depends on
  up: new Map(),
  arrows: 0,
  hot: -1, // whose arrows stand out
  transform: {k: 1, x: 0, y: 0},
  zoom: undefined, // D3's, where it is there
};

// Nodes at most `depth` steps away, 0 for any number, by the given lists.
function reach(start, lists, depth, reached) {
  const seen = new Set([start]);
  let level = [start];
  for (let step = 0; level.length > 0 && (depth === 0 || step < depth); ++step) {
    const next = [];
    for (const node of level) {
      for (const other of lists[node]) {
        if (!seen.has(other)) {
          seen.add(other);
          next.push(other);
        }
      }
    }
    level = next;
  }
  seen.forEach((node) => reached.add(node));
}

function shownNodes(down, up) {
  if (graph.focus < 0) {
    return model.graph.names.map((name, node) => node);
  }
  const reached = new Set();
  const depth = Number(byId('depth').value);
  if (byId('way').value !== 'up') {
    reach(graph.focus, down, depth, reached);
  }
  if (byId('way').value !== 'down') {
    reach(graph.focus, up, depth, reached);
  }
  return [...reached].sort((a, b) => a - b);
}

function noteText() {
  const what = `${counted(graph.nodes.length, 'application', 'applications')}, ${counted(graph.arrows, 'arrow', 'arrows')}`;
  return graph.focus < 0 ? `The whole graph: ${what}. ` : `Around ${model.graph.names[graph.focus]}: ${what}. `;
}

// Chooses nodes and places by the controls, and draws them.
function layOutGraph() {
  const edges = byId('reduced').checked ? model.graph.reduced : model.graph.edges;
  const down = byId('reduced').checked ? adjacency(edges, false) : needs;
  const up = byId('reduced').checked ? adjacency(edges, true) : neededBy;
  graph.nodes = shownNodes(down, up);
  const isShown = new Set(graph.nodes);
  const within = (lists) => new Map(graph.nodes.map((node) => [node, lists[node].filter((other) => isShown.has(other))]));
  graph.down = within(down);
  graph.up = within(up);
  graph.arrows = graph.nodes.reduce((sum, node) => sum + graph.down.get(node).length, 0);
  graph.hot = graph.focus;
  const places = placesOf(graph.nodes, graph.down);
  graph.boxes = places.boxes;
  graph.bends = places.bends;
  byId('graph-note').replaceChildren(noteText());
  if (graph.focus >= 0) {
    byId('graph-note').append(make('button', {type: 'button', onclick: () => showDetails(graph.focus)}, 'Details'));
  }
  fitGraph();
  drawGraph();
  say(noteText());
}

function applyTransform(transform) {
  graph.transform = {k: transform.k, x: transform.x, y: transform.y};
  byId('picture').firstChild?.setAttribute('transform',
    `translate(${transform.x},${transform.y}) scale(${transform.k})`);
  if (graph.nodes.length > mostBoxes || graph.arrows > mostArrows) {
    redrawSoon();
  }
}

function moveTo(k, x, y) {
  if (graph.zoom) {
    graph.zoom.transform(d3.select('#picture'), d3.zoomIdentity.translate(x, y).scale(k));
    return;
  }
  applyTransform({k, x, y});
}

function zoomBy(factor) {
  const {clientWidth: width, clientHeight: height} = byId('picture');
  const {k, x, y} = graph.transform;
  const next = Math.min(4, Math.max(0.01, k * factor));
  moveTo(next, width / 2 - (width / 2 - x) * next / k, height / 2 - (height / 2 - y) * next / k);
}

function fitGraph() {
  const {clientWidth: width, clientHeight: height} = byId('picture');
  let [left, right, top, bottom] = [0, 1, 0, 1];
  for (const box of graph.boxes.values()) {
    right = Math.max(right, box.x + box.width);
    top = Math.min(top, box.y - boxHeight);
    bottom = Math.max(bottom, box.y + boxHeight);
  }
  const k = Math.min(1.2, (width - 20) / (right - left), (height - 20) / (bottom - top));
  moveTo(k, (width - k * (right + left)) / 2, (height - k * (bottom + top)) / 2);
}

function centreOn(node) {
  const {clientWidth: width, clientHeight: height} = byId('picture');
  const box = graph.boxes.get(node);
  const k = Math.max(0.8, graph.transform.k);
  moveTo(k, width / 2 - k * (box.x + box.width / 2), height / 2 - k * box.y);
}

// The focus is part of the address, so that the browser's "Back" leads to the one before.
function showInGraph(node) {
  const address = `#focus=${node < 0 ? '' : encodeURIComponent(model.graph.names[node])}`;
  if (location.hash === address) {
    layOutGraph();
  }
  location.hash = address;
}

function followAddress() {
  if (!location.hash.startsWith('#focus=')) {
    return;
  }
  const name = decodeURIComponent(location.hash.slice('#focus='.length));
  graph.focus = name === '' ? -1 : model.graph.names.indexOf(name);
  byId('find').value = graph.focus < 0 ? '' : name;
  layOutGraph();
  byId('graph').scrollIntoView();
  focusNode(graph.focus);
}

function startZoom() {
  if (typeof d3 === 'undefined') {
    byId('library-note').textContent = 'Built without D3: the graph is moved by its buttons and keys only.';
    byId('licence').hidden = true;
    return;
  }
  graph.zoom = d3.zoom().scaleExtent([0.01, 4]).on('zoom', () => applyTransform(d3.event.transform));
  d3.select('#picture').call(graph.zoom).on('dblclick.zoom', null);
}

function suggestNames() {
  const text = byId('find').value.toLowerCase();
  const hits = [];
  for (let node = 0; node < model.graph.names.length && hits.length < 20; ++node) {
    if (model.graph.names[node].toLowerCase().includes(text)) {
      hits.push(make('option', {value: model.graph.names[node]}));
    }
  }
  byId('names').replaceChildren(...hits);
}

function startGraph() {
  startZoom();
  byId('find').addEventListener('input', later(60, suggestNames));
  byId('find').addEventListener('change', () => {
    const node = findNode(byId('find').value);
    if (node < 0 && byId('find').value !== '') {
      byId('graph-note').replaceChildren(`No application "${byId('find').value}".`);
      say(byId('graph-note').textContent);
      return;
    }
    showInGraph(node);
  });
  for (const id of ['depth', 'way', 'reduced']) {
    byId(id).addEventListener('change', layOutGraph);
  }
  byId('whole').addEventListener('click', () => showInGraph(-1));
  byId('closer').addEventListener('click', () => zoomBy(1.4));
  byId('farther').addEventListener('click', () => zoomBy(1 / 1.4));
  byId('fit').addEventListener('click', fitGraph);
  byId('picture').addEventListener('keydown', graphKey);
  window.addEventListener('hashchange', followAddress);
  if (location.hash.startsWith('#focus=')) {
    followAddress();
  } else if (model.graph.names.length <= mostBoxes) {
    layOutGraph();
  } else {
    // The rest of the page need not wait for it.
    setTimeout(() => graph.nodes.length === 0 && layOutGraph(), 50);
  }
}
