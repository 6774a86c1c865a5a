// ------------------------------------------------------------------------------- the simulator
let source = null, lastWordMs = 0;

function setConnection(connection, notice) {
  view.connection = connection;
  const live = connection === 'live';
  badge('link', {live: 'connected', lost: 'connection lost', ended: 'ended', silent: 'no word',
                 waiting: 'connecting'}[connection], live ? 'good' : connection === 'ended' ? '' : 'bad');
  document.body.classList.toggle('ended', connection === 'ended' || connection === 'lost');
  for (const control of controls()) control.disabled = !live;
  if (live) at('match').disabled = at('when').value === '';
  at('notice').className = notice ? 'shown ' + connection : '';
  at('notice').textContent = notice || '';
  if (connection === 'ended') {
    at('machine').className = 'badge';
    const again = document.createElement('button');
    again.textContent = 'Look for another';
    again.onclick = connect;
    at('notice').append(again);
  }
}

function connect() {
  if (source) source.close();
  setConnection('waiting');
  source = new EventSource('events');
  source.addEventListener('hello', event => {
    heard();
    view.hello = JSON.parse(event.data);
    view.strokes = [];
    view.lines = [];
    at('wire').replaceChildren();
    at('do').replaceChildren(...view.hello.faultActions.map(name => new Option(name, name)));
    at('do').value = 'halt';
    at('verbs').replaceChildren(...view.hello.commands.map(c => new Option(c.help, c.verb + ' ')));
    document.title = 'k7sim ' + location.host;
    setConnection('live');
    askAll();
  });
  source.addEventListener('frame', event => {
    const frame = JSON.parse(event.data);
    heard();
    if (frame.strokes) for (const stroke of frame.strokes) view.strokes.push(stroke);
    if (frame.lines) {
      view.lines = view.lines.concat(frame.lines).slice(-keptLines);
      addLines(frame.lines, frame.passedOver);
    }
    if (frame.state) {
      view.state = frame.state;
      showState();
    }
    ask();
  });
  source.addEventListener('still', heard);
  source.addEventListener('end', () => {
    source.close();
    const summary = view.state && view.state.summary ? '\n' + view.state.summary.trimEnd() : '';
    setConnection('ended', 'The simulator has ended. What is shown is its last state.' + summary);
  });
  source.onerror = () => {
    if (view.connection === 'ended') return;
    setConnection('lost', 'The connection to the simulator is lost; it is tried again.');
    // The browser itself tries again unless it was refused.
    if (source.readyState === EventSource.CLOSED) setTimeout(connect, 2000);
  };
}

function heard() {
  lastWordMs = performance.now();
  if (view.connection === 'silent') setConnection('live');
}
setInterval(() => {
  const seconds = (performance.now() - lastWordMs) / 1000;
  if ((view.connection === 'live' && seconds > view.patienceSeconds) || view.connection === 'silent') {
    setConnection('silent', 'No word from the simulator for ' + Math.floor(seconds) + ' s.');
  }
}, 500);
heard();
connect();
