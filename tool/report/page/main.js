// Puts the page together.

const mostPrintedRows = 2000;

// An application chosen anywhere in the page.
function choose(node, app) {
  markChosen(app ?? model.graph.apps[node] ?? -1);
  showDetails(node, app);
}

function showSummary() {
  const count = (level) => model.findings.filter((finding) => finding.level === level).length;
  const parts = [counted(model.applications.count, 'application', 'applications'),
    counted(model.files_read, 'file', 'files'), counted(count('error'), 'error', 'errors'),
    counted(count('warning'), 'warning', 'warnings')];
  if (model.graph.dropped.length > 0) {
    const dropped = new Set(model.graph.dropped.map((one) => one.name)).size;
    parts.push(`${counted(dropped, 'application', 'applications')} dropped`);
  }
  byId('summary').textContent = `${parts.join(', ')}; the library's result is ${model.result.name}`;
}

showSummary();
startFindings();
startTable();
startRoundsOf(model.start, byId('start-rounds'));
startRoundsOf(model.stop, byId('stop-rounds'));
startTimes();
startGraph();

document.addEventListener('keydown', (event) => {
  if (event.key === 'Escape' && !byId('details').hidden) {
    closeDetails();
  }
  const isTyping = /^(INPUT|SELECT|TEXTAREA)$/.test(document.activeElement.tagName);
  if (event.key === '/' && !isTyping) {
    event.preventDefault();
    byId('search').focus();
  }
});
window.addEventListener('beforeprint', () => {
  showRows(mostPrintedRows);
  showSteps(true);
});
window.addEventListener('afterprint', () => {
  showRows();
  showSteps();
});
