// The findings of the check, a level at a time.

const findingsAtOnce = 200;
const shownLevels = new Set(['error', 'warning', 'note']);
let findingsShown = findingsAtOnce;

function placeText(position) {
  return position.line === 0 ? position.file : `${position.file}:${position.line}:${position.column}`;
}

function findingItem(finding) {
  const item = make('li', {class: finding.level},
    make('p', {}, make('span', {class: 'level'}, finding.level), ` ${finding.message} `,
      make('code', {}, `[${finding.rule}]`)),
    make('p', {class: 'mono'}, placeText(finding.position)));
  const more = [['effect', finding.effect], ['help', finding.help], ['named by', finding.chain]];
  for (const [title, text] of more) {
    if (text) {
      item.append(make('p', {}, make('b', {}, `${title}: `), text));
    }
  }
  for (const place of finding.related ?? []) {
    item.append(make('p', {class: 'mono'}, `${placeText(place.position)}: ${place.text}`));
  }
  return item;
}

function showFindings() {
  const chosen = model.findings.filter((finding) => shownLevels.has(finding.level));
  byId('finding-list').replaceChildren(...chosen.slice(0, findingsShown).map(findingItem));
  byId('more-findings').hidden = chosen.length <= findingsShown;
  if (chosen.length === 0) {
    byId('finding-list').append(make('li', {class: 'note'},
      model.findings.length === 0 ? 'The check finds nothing.' : 'None of the chosen levels.'));
  }
}

function startFindings() {
  for (const level of shownLevels) {
    const count = model.findings.filter((finding) => finding.level === level).length;
    const box = make('input', {type: 'checkbox', checked: true});
    box.addEventListener('change', () => {
      shownLevels[box.checked ? 'add' : 'delete'](level);
      showFindings();
    });
    byId('levels').append(make('label', {class: level}, box, ' ', make('span', {class: 'level'},
      counted(count, level, `${level}s`))));
  }
  if (model.ignored > 0) {
    byId('levels').append(make('span', {class: 'hint'}, `${model.ignored} ignored by comments in the files`));
  }
  byId('more-findings').addEventListener('click', () => {
    findingsShown += findingsAtOnce;
    showFindings();
  });
  showFindings();
}
