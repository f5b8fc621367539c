// Small helpers for the page. Texts only ever become text nodes and attributes, never markup.

const byId = (id) => document.getElementById(id);

function make(tag, attributes = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) {
    if (name === 'onclick') {
      element.addEventListener('click', value);
    } else if (value !== undefined && value !== false) {
      element.setAttribute(name, value === true ? '' : value);
    }
  }
  element.append(...children.filter((child) => child !== undefined));
  return element;
}

function makeSvg(tag, attributes = {}, ...children) {
  const element = document.createElementNS('http://www.w3.org/2000/svg', tag);
  for (const [name, value] of Object.entries(attributes)) {
    element.setAttribute(name, value);
  }
  element.append(...children);
  return element;
}

// Tells those who do not see what has changed.
function say(text) {
  byId('said').textContent = text;
}

function counted(count, one, many) {
  return `${count.toLocaleString('en')} ${count === 1 ? one : many}`;
}

// Calls `work` once the calls have stopped for so long.
function later(milliseconds, work) {
  let timer = 0;
  return () => {
    clearTimeout(timer);
    timer = setTimeout(work, milliseconds);
  };
}

// A button that reads like a link and shows an application.
function nameButton(node) {
  return make('button', {type: 'button', class: 'name', onclick: () => choose(node)}, model.graph.names[node]);
}
