// The time line: a row for each step, of which only those in view are there.

const stepHeight = 22;
const stepsBeyond = 20;
const times = {steps: [], makespan: 0};

function stepsOf(request) {
  const steps = [];
  for (let i = 0; i < request.steps.length; i += 5) {
    const [node, start, end, slack, isCritical] = request.steps.slice(i, i + 5);
    steps.push({node, start, end, slack, isCritical: isCritical === 1});
  }
  return steps;
}

function timeText(milliseconds) {
  return milliseconds < 10000 ? `${milliseconds} ms` : `${(milliseconds / 1000).toFixed(1)} s`;
}

function stepRow(step, index) {
  const percent = (time) => `${100 * time / Math.max(1, times.makespan)}%`;
  const name = nameButton(step.node);
  const bar = make('div', {class: 'bar'});
  bar.style.left = percent(step.start);
  bar.style.width = percent(step.end - step.start);
  const lane = make('div', {class: 'lane'}, bar);
  if (step.slack > 0) {
    const slack = make('div', {class: 'slack'});
    slack.style.left = percent(step.end);
    slack.style.width = percent(Math.min(step.slack, times.makespan - step.end));
    lane.prepend(slack);
  }
  const text = `${timeText(step.start)} to ${timeText(step.end)}, ` +
    (step.isCritical ? 'critical' : `${timeText(step.slack)} to spare`);
  const row = make('div', {class: step.isCritical ? 'step critical' : 'step', role: 'listitem', title: text,
    'aria-posinset': index + 1, 'aria-setsize': times.steps.length}, name,
  make('span', {class: 'unseen'}, text), lane);
  row.style.top = `${index * stepHeight}px`;
  return row;
}

function showSteps(isAll = false) {
  const scroller = byId('steps');
  const first = isAll ? 0 : Math.max(0, Math.floor(scroller.scrollTop / stepHeight) - stepsBeyond);
  const last = isAll ? 2000 : Math.ceil((scroller.scrollTop + scroller.clientHeight) / stepHeight) + stepsBeyond;
  const active = document.activeElement;
  if (!isAll && active !== scroller && scroller.contains(active) && first === times.first) {
    return; // so that the keyboard does not lose its place
  }
  times.first = first;
  byId('step-rows').replaceChildren(...times.steps.slice(first, last).map((step, i) => stepRow(step, first + i)));
}

function showAxis() {
  const marks = typeof d3 === 'undefined' ? [0, times.makespan / 2, times.makespan] :
    d3.scaleLinear().domain([0, times.makespan]).ticks(6);
  byId('axis').replaceChildren(...marks.map((mark) => {
    const element = make('span', {}, timeText(mark));
    element.style.left = `${100 * mark / Math.max(1, times.makespan)}%`;
    return element;
  }));
}

function showTimes() {
  const which = byId('which').value;
  const request = model[which];
  times.makespan = request.makespan;
  times.steps = stepsOf(request).filter((step) => !byId('critical').checked || step.isCritical);
  byId('makespan').textContent = request.steps.length === 0 ? 'Nothing is handed out.' : `All done after ${timeText(request.makespan)}.`;
  const others = which === 'start' ? 'Each start takes 100 ms' : 'Each stop takes its term_time_out, the longest that it may take';
  byId('times-hint').textContent = `${others}${model.times_file && `, unless ${model.times_file} says otherwise`}. ` +
    'The thin line behind a bar is the time that it could take longer.';
  byId('step-rows').style.height = `${times.steps.length * stepHeight}px`;
  byId('steps').scrollTop = 0;
  times.first = -1;
  showAxis();
  showSteps();
}

function startTimes() {
  byId('which').addEventListener('change', showTimes);
  byId('critical').addEventListener('change', showTimes);
  byId('steps').addEventListener('scroll', () => requestAnimationFrame(() => showSteps()));
  showTimes();
}
