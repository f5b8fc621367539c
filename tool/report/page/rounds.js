// The rounds of a start and of a stop.

const namesForOpenRounds = 400;
const namesAtOnce = 200;

// Fills a round with its names when it is opened: ten thousand buttons would take long.
function fillRound(place, nodes, from) {
  place.append(...nodes.slice(from, from + namesAtOnce).map(nameButton));
  const left = nodes.length - from - namesAtOnce;
  if (left > 0) {
    const more = make('button', {type: 'button', onclick: () => {
      more.remove();
      fillRound(place, nodes, from + namesAtOnce);
    }}, `${left} more`);
    place.append(more);
  }
}

function roundElement(nodes, title, isOpen) {
  const place = make('div', {class: 'names'});
  const round = make('details', {open: isOpen}, make('summary', {}, `${title}: ${counted(nodes.length, 'application', 'applications')}`), place);
  const fill = () => {
    if (round.open && place.childElementCount === 0) {
      fillRound(place, nodes, 0);
    }
  };
  round.addEventListener('toggle', fill);
  fill();
  return round;
}

function startRoundsOf(request, place) {
  const count = request.rounds.reduce((sum, nodes) => sum + nodes.length, 0);
  place.append(make('p', {}, `${counted(count, 'application', 'applications')} in ${counted(request.rounds.length, 'round', 'rounds')}.`));
  if (request.result.code !== 0) {
    place.append(make('p', {class: 'bad'}, `The library's result is ${request.result.name}.`));
  }
  for (const cycle of request.cycles) {
    place.append(make('p', {class: 'bad'}, 'A cycle: nothing is handed out. ',
      ...[...cycle, cycle[0]].flatMap((node, i) => (i === 0 ? [nameButton(node)] : [' waits for ', nameButton(node)]))));
  }
  const lists = [['Held up by the cycles', request.blocked], ['Never handed out', request.stalled]];
  for (const [title, nodes] of lists) {
    if (nodes.length > 0) {
      place.append(roundElement(nodes, title, nodes.length <= namesForOpenRounds));
    }
  }
  request.rounds.forEach((nodes, index) => {
    place.append(roundElement(nodes, `Round ${index + 1}`, count <= namesForOpenRounds));
  });
}
