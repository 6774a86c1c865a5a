// Has cncjs, a server that drives machines from a browser, stream a file of 2,000 lines to k7sim, and
// printcore the same file to another, and compares what was cut. Run by ./k7 bench peers.
'use strict';
const {spawn, spawnSync} = require('child_process');
const fs = require('fs');
const path = require('path');

const [, , simulator, folder] = process.argv;
const modules = path.join(folder, 'node_modules');
const jwt = require(path.join(modules, 'jsonwebtoken'));
const io = require(path.join(modules, 'socket.io-client'));

const FIGURES = 250;
const SECRET = 'bench'; // of the server that this script starts for itself
const SERVER_PORT = 20000 + process.pid % 20000;
const children = [];

// Small figures with an arc each, all over the plate; 2000 lines.
function drawing() {
  const lines = ['M3'];
  for (let i = 0; i < FIGURES; ++i) {
    const x = 20 + i % 25 * 20, y = 20 + Math.floor(i / 25) * 30;
    lines.push(`G0 X${x} Y${y}`, 'G1 Z26 F3000', `X${x + 5}`,
               `G3 X${x + 5} Y${y + 5} I0 J2.5`, `G1 X${x}`, `Y${y}`, 'G0 Z20');
    if (i + 1 < FIGURES) lines.push('G21 G90');
  }
  return lines;
}

function fail(why) {
  console.error('bench peers: ' + why);
  finish(1);
}

function finish(code) {
  for (const child of children) child.kill('SIGTERM');
  process.exit(code);
}

function exited(child) {
  return new Promise((resolve) => child.on('exit', resolve));
}

async function waitFor(what, seconds, condition) {
  const end = Date.now() + seconds * 1000;
  while (!condition()) {
    if (Date.now() > end) fail('no ' + what + ' within ' + seconds + ' s');
    await new Promise((resolve) => setTimeout(resolve, 20));
  }
}

async function startSimulator(name) {
  const at = (end) => path.join(folder, name + end);
  const child = spawn(simulator, ['--pty', at('.tty'), '--speed', 'max', '--homed', '--surface', 'plane:1',
    '--picture', at('.svg'), '--report', at('.json'), '--transcript', at('.txt')]);
  children.push(child);
  let said = '';
  child.stdout.on('data', (bytes) => { said += bytes; });
  await waitFor('simulator', 20, () => said.includes('ready\n'));
  return {child, port: at('.tty'), picture: at('.svg'), report: at('.json')};
}

async function stopSimulator(machine) {
  const end = exited(machine.child);
  machine.child.kill('SIGTERM');
  await end;
  machine.report = JSON.parse(fs.readFileSync(machine.report, 'utf8'));
  machine.picture = fs.readFileSync(machine.picture, 'utf8');
}

// Streams the lines through the server as a page of its would; the result is the seconds it took.
async function streamByServer(port, lines) {
  const config = path.join(folder, 'cncrc.json');
  fs.writeFileSync(config, JSON.stringify({secret: SECRET, state: {checkForUpdates: false}}));
  const server = spawn(process.execPath, [path.join(modules, 'cncjs', 'bin', 'cncjs'), '-H', '127.0.0.1',
    '-p', String(SERVER_PORT), '-c', config], {env: {...process.env, HOME: folder}});
  children.push(server);
  let log = '';
  for (const stream of [server.stdout, server.stderr]) stream.on('data', (bytes) => { log += bytes; });
  await waitFor('server', 60, () => log.includes('Starting the server at'));

  const token = jwt.sign({id: '', name: 'bench'}, SECRET);
  const socket = io('http://127.0.0.1:' + SERVER_PORT, {query: 'token=' + token});
  let opened = false, state = {}, sender = {};
  socket.on('connect_error', (error) => fail('server: ' + error));
  socket.on('startup', () => socket.emit('open', port, {controllerType: 'Smoothie', baudrate: 115200},
    (error) => { if (error) fail('server: ' + error); opened = true; }));
  socket.on('controller:state', (type, now) => { state = now; });
  socket.on('sender:status', (now) => { sender = now; });
  const active = () => (state.status || {}).activeState;
  await waitFor('open port', 30, () => opened);
  await waitFor('status of the machine', 30, () => active() === 'Idle');
  const start = Date.now();
  socket.emit('command', port, 'gcode:load', 'drawing.gcode', lines.join('\n') + '\n', {},
    (error) => { if (error) fail('server: ' + error); });
  await waitFor('loaded file', 30, () => sender.total > 0);
  const total = sender.total;
  socket.emit('command', port, 'gcode:start');
  await waitFor('end of the file', 120, () => sender.total > 0 && sender.received >= sender.total);
  const seconds = (Date.now() - start) / 1000;
  await waitFor('rest of the machine', 30, () => active() === 'Idle');
  socket.close();
  const end = exited(server);
  server.kill('SIGTERM');
  await end;
  console.log(`   cncjs: ${total} lines in ${seconds.toFixed(1)} s`);
}

function streamByPrintcore(port, file) {
  const start = Date.now();
  const run = spawnSync('printcore', [port, file], {timeout: 200000, encoding: 'utf8'});
  if (run.status !== 0) fail('printcore: ' + run.stdout + run.stderr);
  console.log(`   printcore: ${FIGURES * 8} lines in ${((Date.now() - start) / 1000).toFixed(1)} s`);
}

async function main() {
  const lines = drawing();
  if (lines.length !== FIGURES * 8) fail(lines.length + ' lines');
  const file = path.join(folder, 'drawing.gcode');
  fs.writeFileSync(file, lines.join('\n') + '\n');
  const first = await startSimulator('cncjs');
  await streamByServer(first.port, lines);
  await stopSimulator(first);
  const second = await startSimulator('printcore');
  streamByPrintcore(second.port, file);
  await stopSimulator(second);
  const wanted = FIGURES * (15 + 2.5 * Math.PI) / 25.4;
  for (const machine of [first, second]) {
    if (Math.abs(machine.report.cutInches - wanted) > 0.1 || machine.report.errors.total !== 0) {
      fail(`cut ${machine.report.cutInches} in, not ${wanted}; ${machine.report.errors.total} errors`);
    }
  }
  if (first.picture !== second.picture) fail('the two pictures differ');
  console.log(`   both: cut ${first.report.cutInches.toFixed(1)} in, 0 errors, the same picture`);
  finish(0);
}

main().catch((error) => fail(error.stack));
