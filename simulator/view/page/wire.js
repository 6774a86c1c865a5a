// ------------------------------------------------------------------------------------ the wire
const ways = {'>': 'in', '<': 'out', '~': 'lost', '!': 'note'};
const keptLines = 300;

function span(name, text) {
  const one = document.createElement('span');
  one.className = name;
  one.textContent = text;
  return one;
}

function addLines(lines, passedOver) {
  const wire = at('wire'), items = [];
  if (passedOver) {
    const item = document.createElement('li');
    item.className = 'gap';
    item.textContent = passedOver + ' lines passed too fast to be shown';
    items.push(item);
  }
  for (const [, seconds, mark, link, text] of lines.slice(-keptLines)) {
    const item = document.createElement('li');
    item.className = ways[mark] || '';
    // Line ends are part of what is sent, but seldom of what is looked for.
    const [, body, end] = /^(.*?)((?:\\r|\\n)*)$/.exec(text);
    const shown = span('text', (link ? link + ' ' : '') + body);
    shown.append(span('end', end));
    item.append(span('time', seconds.toFixed(3)), span('way', mark), shown);
    items.push(item);
  }
  wire.append(...items);
  while (wire.children.length > keptLines) wire.firstChild.remove();
  follow();
}

function follow() {
  if (at('follow').checked) at('wire').scrollTop = at('wire').scrollHeight;
}
