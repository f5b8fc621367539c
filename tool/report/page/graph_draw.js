// Draws what of the graph is in view: boxes with names while there are not too many, else one mark for each.

const redrawSoon = later(60, () => drawGraph());

function nodesInView() {
  if (graph.nodes.length <= mostBoxes) {
    return graph.nodes;
  }
  const {clientWidth: width, clientHeight: height} = byId('picture');
  const {k, x, y} = graph.transform;
  return graph.nodes.filter((node) => {
    const box = graph.boxes.get(node);
    return box.x * k + x < width && (box.x + box.width) * k + x > 0 &&
      (box.y - boxHeight) * k + y < height && (box.y + boxHeight) * k + y > 0;
  });
}

// The line of an arrow: curved between two columns, straight across one.
function lineOf(from, to, isLeft) {
  const a = graph.boxes.get(from);
  const b = graph.boxes.get(to);
  const way = graph.bends.get(`${from} ${to}`) ?? [];
  const points = (isLeft ? [...way].reverse() : way).map((bend) => graph.boxes.get(bend)).flatMap((box) => {
    const sides = [[box.x, box.y], [box.x + box.width, box.y]];
    return isLeft ? sides.reverse() : sides;
  });
  points.push([isLeft ? b.x + b.width : b.x, b.y]);
  let [x, y] = [isLeft ? a.x : a.x + a.width, a.y];
  let line = `M${x} ${y}`;
  points.forEach(([nextX, nextY], i) => {
    const middle = (x + nextX) / 2;
    line += i % 2 === 1 ? `L${nextX} ${nextY}` : `C${middle} ${y} ${middle} ${nextY} ${nextX} ${nextY}`;
    [x, y] = [nextX, nextY];
  });
  return line;
}

// Paths for many arrows at once: their lines, and their tips.
function arrowPaths(pairs) {
  const lines = [];
  const tips = [];
  for (const [from, to] of pairs) {
    const a = graph.boxes.get(from);
    const b = graph.boxes.get(to);
    if (from === to) {
      lines.push(`M${a.x + a.width - 8} ${a.y - 13}c4-12 24-6 22 6c-1 7-10 8-17 7`);
      continue;
    }
    const isLeft = b.x < a.x; // within a cycle an arrow may lead to the right
    lines.push(lineOf(from, to, isLeft));
    tips.push(`M${isLeft ? b.x + b.width : b.x} ${b.y}l${isLeft ? 7 : -7}-3.5v7z`);
  }
  return [lines.join(''), tips.join('')];
}

function arrowElements(pairs, more) {
  const [lines, tips] = arrowPaths(pairs);
  return [makeSvg('path', {class: `edges ${more}`, d: lines}), makeSvg('path', {class: `tips ${more}`, d: tips})];
}

function arrowsOf(nodes) {
  const isIn = new Set(nodes);
  const pairs = [];
  for (const node of nodes) {
    graph.down.get(node).forEach((other) => pairs.push([node, other]));
    graph.up.get(node).forEach((other) => {
      if (!isIn.has(other)) {
        pairs.push([other, node]);
      }
    });
  }
  return pairs;
}

function ariaLabel(node) {
  const state = stateTexts[model.graph.states[node]];
  return `${model.graph.names[node]}${state && `, ${state}`}, depends on ${needs[node].length}, needed by ${neededBy[node].length}`;
}

function nodeElement(node) {
  const box = graph.boxes.get(node);
  const classes = ['node', node === graph.focus ? 'chosen' : '', model.graph.states[node] > 0 ? 'absent' : ''];
  const frame = {x: box.x, y: box.y - boxHeight / 2, width: box.width, height: boxHeight, rx: 5};
  const element = makeSvg('g', {class: classes.join(' ').trim(), tabindex: '-1', role: 'button',
    'aria-label': ariaLabel(node), 'data-node': node},
  makeSvg('rect', {class: 'box', ...frame}),
  makeSvg('text', {x: box.x + 10, y: box.y + 4}, labelOf(node)),
  makeSvg('title', {}, model.graph.names[node]));
  if (patternNodes.has(node)) {
    element.insertBefore(makeSvg('rect', {class: 'inner', x: frame.x + 3, y: frame.y + 3,
      width: frame.width - 6, height: frame.height - 6, rx: 3}), element.children[1]);
  }
  element.addEventListener('click', () => showInGraph(node));
  element.addEventListener('pointerenter', () => heat(node));
  element.addEventListener('focus', () => heat(node));
  return element;
}

function dotsElement(nodes, more) {
  const marks = nodes.map((node) => {
    const box = graph.boxes.get(node);
    return `M${box.x} ${box.y - 13}h${box.width}v26h${-box.width}z`;
  });
  return makeSvg('path', {class: `dots ${more}`, d: marks.join('')});
}

function dotsElements(nodes) {
  const isAbsent = (node) => model.graph.states[node] > 0;
  return [dotsElement(nodes.filter((node) => !isAbsent(node) && node !== graph.focus), ''),
    dotsElement(nodes.filter(isAbsent), 'absent'), dotsElement(nodes.filter((node) => node === graph.focus), 'chosen')];
}

function drawGraph() {
  const visible = nodesInView();
  const hasBoxes = visible.length <= mostBoxes;
  const {k, x, y} = graph.transform;
  let pairs = graph.arrows <= mostArrows ? arrowsOf(graph.nodes) : [];
  if (pairs.length === 0 && hasBoxes) {
    pairs = arrowsOf(visible);
    pairs = pairs.length <= mostArrows ? pairs : [];
  }
  const hadFocus = byId('picture').contains(document.activeElement) ? document.activeElement.dataset.node : undefined;
  const all = makeSvg('g', {transform: `translate(${x},${y}) scale(${k})`}, ...arrowElements(pairs, ''),
    makeSvg('g', {id: 'hot'}), ...(hasBoxes ? visible.map(nodeElement) : dotsElements(visible)));
  byId('picture').replaceChildren(all);
  byId('picture').classList.toggle('crowded', !hasBoxes);
  heat(graph.hot);
  if (hadFocus !== undefined) {
    elementOf(Number(hadFocus))?.focus({preventScroll: true});
  }
}

// Makes one node's arrows stand out.
function heat(node) {
  graph.hot = node;
  const pairs = graph.down.has(node) ? arrowsOf([node]) : [];
  byId('hot')?.replaceChildren(...(pairs.length === 0 ? [] : arrowElements(pairs, 'hot')));
}

function elementOf(node) {
  return byId('picture').querySelector(`[data-node="${node}"]`);
}

function focusNode(node) {
  if (!graph.down.has(node)) {
    byId('picture').focus({preventScroll: true});
    return;
  }
  if (!elementOf(node)) {
    centreOn(node);
    drawGraph();
  }
  elementOf(node)?.focus({preventScroll: true});
}

// The node that an arrow key leads to: left to what it depends on, right to what needs it, up and down within
// the column.
function nextNode(node, key) {
  if (!graph.down.has(node)) {
    return graph.nodes[0];
  }
  if (key === 'ArrowLeft' || key === 'ArrowRight') {
    return (key === 'ArrowLeft' ? graph.down : graph.up).get(node)[0] ?? node;
  }
  const here = graph.boxes.get(node);
  const way = key === 'ArrowDown' ? 1 : -1;
  const beyond = graph.nodes.map((other) => [way * (graph.boxes.get(other).y - here.y), other])
    .filter(([distance, other]) => distance > 0 && graph.boxes.get(other).x === here.x);
  return beyond.sort((a, b) => a[0] - b[0])[0]?.[1] ?? node;
}

function graphKey(event) {
  const active = document.activeElement.dataset?.node;
  const node = active === undefined ? graph.focus : Number(active);
  const actions = {'+': () => zoomBy(1.4), '=': () => zoomBy(1.4), '-': () => zoomBy(1 / 1.4), '0': fitGraph};
  if (event.key.startsWith('Arrow') && graph.nodes.length > 0) {
    actions[event.key] = () => focusNode(active === undefined && node >= 0 ? node : nextNode(node, event.key));
  }
  if ((event.key === 'Enter' || event.key === ' ') && active !== undefined) {
    actions[event.key] = () => showInGraph(node);
  }
  if (!event.ctrlKey && !event.metaKey && !event.altKey && actions[event.key]) {
    event.preventDefault();
    actions[event.key]();
  }
}
