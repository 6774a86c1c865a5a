// --------------------------------------------------------------------------------- the machine
function badge(id, text, kind) {
  show(id, text);
  at(id).className = 'badge ' + kind;
}

function clock(seconds) {
  const whole = Math.floor(seconds), two = n => String(n).padStart(2, '0');
  return (whole >= 3600 ? Math.floor(whole / 3600) + ':' : '') +
         two(Math.floor(whole / 60) % 60) + ':' + two(whole % 60);
}

function bold(id, pairs) {
  const box = at(id);
  if (box.dataset.now === pairs.join()) return;
  box.dataset.now = pairs.join();
  box.replaceChildren(...pairs.flatMap(([name, value]) => {
    const b = document.createElement('b');
    b.textContent = value;
    return [name + ' ', b];
  }));
}

function showState() {
  const s = view.state, h = view.hello;
  if (s.halted) badge('machine', 'HALTED', 'bad');
  else if (s.moving) badge('machine', s.depth > 0 ? 'cutting' : 'moving', 'busy');
  else badge('machine', 'at rest', 'good');
  show('alarm', s.halted ? s.alarm : '');
  const hosts = s.links.map(l => l.name + (l.open ? ' open' : ' no host')).join(', ');
  show('facts', hosts + ' · ' + clock(s.seconds) + (h.speed ? ' at ' + h.speed + '×' : ' as fast as it can') +
       ' · ' + s.lines + ' lines, ' + s.replies + ' replies');
  bold('head', [['X', inches(s.head.x)], ['Y', inches(s.head.y)], ['Z', inches(s.head.z)]]);
  show('tool', s.depth > 0 ? inches(s.depth) + ' in deep in the plate' : 'above the plate');
  show('feed', s.feedMmPerSec > 0 ? inches(s.feedMmPerSec / 25.4, 2) + ' in/s (' +
       Math.round(s.feedMmPerSec * 60) + ' mm/min)' : 'none');
  at('meter').max = h.queueRoom;
  at('meter').value = s.queued;
  show('queue', s.queued + ' of ' + h.queueRoom + (s.waiting ? ', ' + s.waiting + ' waiting' : ''));
  show('spindle', (s.spindle.on ? 'on, level ' : 'off, level ') + s.spindle.level +
       (s.output ? ' · output on' : ''));
  show('motors', s.motors ? 'on' : 'off');
  show('homed', s.homed ? 'yes' : 'no');
  show('surface', h.table.width + ' × ' + h.table.height + ' in, ' + (s.surface || 'level'));
  show('errors', s.errors.total ? s.errors.total + ': ' + s.errors.first.join('; ') : 'none');
  at('errors').style.color = s.errors.total ? 'var(--bad)' : '';
  show('cut', 'cut ' + inches(s.cutInches, 1) + ' in');
  if (s.deepest > 0 && at('tone').dataset.now !== String(s.deepest)) {
    at('tone').dataset.now = s.deepest;
    const scale = document.createElement('i');
    scale.className = 'scale';
    at('tone').replaceChildren('0', scale, inches(s.deepest, 3) + ' in deep');
  }
  for (const one of s.switches) {
    const row = at('switch-' + one.name);
    row.querySelector('.lamp').classList.toggle('on', one.closed);
    const state = row.querySelector('.state'), text = one.closed ? 'closed' : 'open';
    if (state.textContent !== text) state.textContent = text;
    for (const button of row.querySelectorAll('button')) {
      button.classList.toggle('held', button.dataset.line.endsWith(' ' + one.held));
      button.setAttribute('aria-pressed', button.classList.contains('held'));
    }
  }
  const list = s.faults.map(f => f.fired + '× ' + f.fault).join('\n');
  if (at('faults').dataset.now !== list) {
    at('faults').dataset.now = list;
    at('faults').replaceChildren(...s.faults.map(f => {
      const item = document.createElement('li'), b = document.createElement('b');
      b.textContent = f.fired + '× ';
      item.append(b, f.fault);
      return item;
    }));
  }
}
