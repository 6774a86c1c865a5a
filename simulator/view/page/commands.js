// --------------------------------------------------------------------------------- the commands
const controls = () => document.querySelectorAll('main button, main form input, main form select');

async function command(line) {
  const answer = at('answer');
  let text = '', good = false;
  try {
    const reply = await fetch('control', {method: 'POST', body: line});
    text = await reply.text();
    good = reply.ok;
  } catch (error) {
    text = 'the simulator does not answer';
  }
  answer.className = good ? '' : 'bad';
  answer.textContent = line + (text.trim() ? '\n' + text.trim() : good ? ': done' : ': refused');
  return good;
}
view.command = command;

function makeSwitches() {
  for (const name of ['x', 'y', 'z', 'probe']) {
    const row = at('switches').insertRow();
    row.id = 'switch-' + name;
    const label = row.insertCell(), buttons = row.insertCell();
    label.append(span('lamp', ''), name === 'probe' ? 'Probe ' : name.toUpperCase() + ' ', span('state', ''));
    buttons.className = 'three';
    for (const [state, text] of [['auto', 'follows head'], ['1', 'closed'], ['0', 'open']]) {
      const button = document.createElement('button');
      button.dataset.line = 'switch ' + name + ' ' + state;
      button.textContent = text;
      buttons.append(button);
    }
  }
}
makeSwitches();

document.addEventListener('click', event => {
  const button = event.target.closest('button[data-line]');
  if (!button || (button.dataset.ask && !confirm(button.dataset.ask))) return;
  command(button.dataset.line);
});
for (const form of document.querySelectorAll('form[data-verb]')) {
  form.addEventListener('submit', event => {
    event.preventDefault();
    command((form.dataset.verb + ' ' + form.querySelector('input').value).trim());
  });
}
at('any').addEventListener('submit', event => {
  event.preventDefault();
  command(at('line').value);
});
at('fault').addEventListener('submit', event => {
  event.preventDefault();
  const fault = {};
  const when = at('when').value;
  if (when === '') fault.atMs = 0;
  else fault[when] = when === 'line' ? Number(at('match').value) : at('match').value;
  fault.do = at('do').value;
  if (at('ms').value) fault.ms = Number(at('ms').value);
  if (at('say').value) fault.text = at('say').value;
  if (at('count').value !== '1') fault.count = Number(at('count').value);
  command('fault ' + JSON.stringify(fault));
});
at('when').addEventListener('change', () => { at('match').disabled = at('when').value === ''; });
for (const id of ['travels', 'close']) at(id).addEventListener('change', askAll);
new ResizeObserver(askAll).observe(canvas.parentElement);
new ResizeObserver(() => follow()).observe(at('wire'));
at('follow').addEventListener('change', () => follow());
