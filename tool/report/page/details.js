// Everything about one application, at the side of the page.

let returnTo; // what had the focus before

function nameList(title, nodes) {
  const list = make('div', {class: 'names'}, ...nodes.slice(0, 500).map(nameButton));
  if (nodes.length > 500) {
    list.append(`and ${nodes.length - 500} more`);
  }
  return [make('h3', {}, `${title} (${nodes.length})`), list];
}

function settingsList(app) {
  const list = make('dl', {});
  for (const column of columns) {
    list.append(make('dt', {}, column.name), make('dd', {class: 'mono'}, valueOf(column, app)));
  }
  return list;
}

function roundText(node) {
  const parts = [];
  if (startRounds.has(node)) {
    parts.push(`starts in round ${startRounds.get(node)}`);
  }
  if (stopRounds.has(node)) {
    parts.push(`stops in round ${stopRounds.get(node)}`);
  }
  return parts.length === 0 ? 'Neither started nor stopped with all others.' : `When all are requested, it ${parts.join(' and ')}.`;
}

function closeDetails() {
  byId('details').hidden = true;
  if (returnTo?.isConnected) {
    returnTo.focus();
  }
}

// `app` where it is known; a name may have several records, of which the graph knows the last.
function showDetails(node, app = model.graph.apps[node]) {
  const panel = byId('details');
  const close = make('button', {type: 'button', onclick: closeDetails}, 'Close');
  const parts = [make('div', {class: 'controls'}, close,
    make('button', {type: 'button', onclick: () => { closeDetails(); showInGraph(node); }}, 'Show in the graph')),
  make('h2', {id: 'details-title', tabindex: '-1'}, model.graph.names[node])];
  if (app === null) {
    parts.push(make('p', {class: 'bad'}, `This name is ${stateTexts[model.graph.states[node]]}.`));
  } else {
    const file = valueOf(columnNamed.get('file'), app);
    parts.push(make('p', {class: 'mono'}, `${file}:${model.applications.lines[app]}`),
      make('p', {}, roundText(node)));
  }
  parts.push(...nameList('Depends on', needs[node]), ...nameList('Needed by', neededBy[node]));
  if (app !== null) {
    parts.push(make('h3', {}, 'Settings'), settingsList(app));
  }
  if (!panel.contains(document.activeElement)) {
    returnTo = document.activeElement;
  }
  panel.replaceChildren(...parts);
  panel.hidden = false;
  panel.scrollTop = 0;
  byId('details-title').focus();
}
