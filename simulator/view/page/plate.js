// ---------------------------------------------------------------------------------- the plate
// Tones and widths are those of the picture that the simulator writes.
const light = [0xb8, 0x9a, 0x6c], dark = [0x1c, 0x14, 0x0c];
const colour = (depth, deepest) => {
  const share = deepest > 0 ? Math.min(Math.max(depth / deepest, 0), 1) : 1;
  return 'rgb(' + light.map((c, i) => Math.round(c + (dark[i] - c) * share)).join() + ')';
};
const widthInches = depth => Math.min(Math.max(0.012 + 0.5 * depth, 0.012), 0.15);

const canvas = at('plate');
const layers = {ground: null, travel: null, cuts: null};
for (const name in layers) layers[name] = document.createElement('canvas').getContext('2d');
const place = {scale: 1, x: 0, y: 0};  // pixels an inch, and the place of the table home
view.place = place;
let drawn = 0;           // strokes that are on the layers
let deepestDrawn = 0;    // the depth whose tone is the darkest on them
let redraw = true;       // everything is to be drawn again
let redrawCostMs = 0, redrawnMs = 0;
let due = false;

const X = x => place.x + x * place.scale;
const Y = y => view.hello.homeAtTop ? place.y + y * place.scale : place.y - y * place.scale;

// The part of the world that is to be seen: the plate, or what has been cut.
function extent() {
  const {width, height} = view.hello.table;
  const whole = [0, 0, width, height];
  if (!at('close').checked) return whole;
  const box = [Infinity, Infinity, -Infinity, -Infinity];
  for (const s of view.strokes) {
    if (!s[4]) continue;
    box[0] = Math.min(box[0], s[0], s[2]); box[1] = Math.min(box[1], s[1], s[3]);
    box[2] = Math.max(box[2], s[0], s[2]); box[3] = Math.max(box[3], s[1], s[3]);
  }
  if (box[0] > box[2]) return whole;
  const room = 0.1 + 0.05 * Math.max(box[2] - box[0], box[3] - box[1]);
  return [box[0] - room, box[1] - room, box[2] + room, box[3] + room];
}

function layOut() {
  const ratio = window.devicePixelRatio || 1;
  const css = canvas.clientWidth;
  const [x0, y0, x1, y1] = extent();
  const margin = 30 * ratio;
  const wide = Math.max(css * ratio, 120);
  const most = Math.max(window.innerHeight * 0.62, 180) * ratio;
  place.scale = Math.min((wide - 2 * margin) / (x1 - x0), (most - 2 * margin) / (y1 - y0));
  const high = Math.round((y1 - y0) * place.scale + 2 * margin);
  place.x = (wide - (x1 - x0) * place.scale) / 2 - x0 * place.scale;
  place.y = view.hello.homeAtTop ? margin - y0 * place.scale : high - margin + y0 * place.scale;
  if (canvas.width !== Math.round(wide) || canvas.height !== high) {
    canvas.width = Math.round(wide);
    canvas.height = high;
    canvas.style.height = high / ratio + 'px';
  }
  for (const name in layers) {
    layers[name].canvas.width = canvas.width;
    layers[name].canvas.height = canvas.height;
  }
}

function drawGround() {
  const g = layers.ground, {width, height} = view.hello.table, ratio = window.devicePixelRatio || 1;
  g.fillStyle = '#ffffff';
  g.fillRect(0, 0, canvas.width, canvas.height);
  const top = Math.min(Y(0), Y(height));
  g.fillStyle = '#f6efdf';
  g.fillRect(X(0), top, width * place.scale, height * place.scale);
  g.strokeStyle = '#8c8577';
  g.lineWidth = ratio;
  g.strokeRect(X(0), top, width * place.scale, height * place.scale);
  // Ticks along the two edges that meet in the table home, one an inch, as many numbers as there is
  // room for.
  g.fillStyle = '#6d6a63';
  g.font = 11 * ratio + 'px "Liberation Sans", sans-serif';
  const out = view.hello.homeAtTop ? -1 : 1;
  const step = [1, 2, 5, 10, 20, 50, 100, 500].find(n => n * place.scale > 30 * ratio) || 1000;
  g.beginPath();
  g.textAlign = 'center';
  g.textBaseline = 'middle';
  for (let i = 0; i <= width; ++i) {
    g.moveTo(X(i), Y(0));
    g.lineTo(X(i), Y(0) + out * ratio * (i % step ? 3 : 6));
    if (i % step === 0) g.fillText(i, X(i), Y(0) + out * 15 * ratio);
  }
  g.textAlign = 'right';
  for (let i = 0; i <= height; ++i) {
    g.moveTo(X(0), Y(i));
    g.lineTo(X(0) - ratio * (i % step ? 3 : 6), Y(i));
    if (i && i % step === 0) g.fillText(i, X(0) - 10 * ratio, Y(i));
  }
  g.stroke();
  g.strokeStyle = '#c0392b';
  g.lineWidth = 1.5 * ratio;
  g.beginPath();
  g.arc(X(0), Y(0), 4 * ratio, 0, 7);
  g.moveTo(X(0) - 8 * ratio, Y(0)); g.lineTo(X(0) + 8 * ratio, Y(0));
  g.moveTo(X(0), Y(0) - 8 * ratio); g.lineTo(X(0), Y(0) + 8 * ratio);
  g.stroke();
}

// Strokes from `first` on. Of cuts over each other the deeper one stays, whichever came first.
function drawStrokes(first) {
  const ratio = window.devicePixelRatio || 1;
  const finest = ratio;  // pixels; a thinner line could hardly be seen
  for (const cuts of [false, true]) {
    const g = cuts ? layers.cuts : layers.travel;
    g.lineCap = g.lineJoin = cuts ? 'round' : 'butt';
    if (!cuts) g.lineJoin = 'round';
    g.globalCompositeOperation = cuts ? 'darken' : 'source-over';
    let style = null, x = NaN, y = NaN;
    for (let i = first; i < view.strokes.length; ++i) {
      const [x0, y0, x1, y1, depth] = view.strokes[i];
      if ((depth > 0) !== cuts) continue;
      const colourNow = cuts ? colour(depth, deepestDrawn) : '#a3a9b0';
      const widthNow = cuts ? Math.max(widthInches(depth) * place.scale, finest) : ratio;
      const styleNow = colourNow + widthNow;
      if (styleNow !== style) {
        if (style) g.stroke();
        g.beginPath();
        g.strokeStyle = colourNow;
        g.lineWidth = widthNow;
        style = styleNow;
        x = NaN;
      }
      if (x !== x0 || y !== y0) g.moveTo(X(x0), Y(y0));
      g.lineTo(X(x1), Y(y1));
      x = x1; y = y1;
    }
    if (style) g.stroke();
  }
  drawn = view.strokes.length;
}

// The stroke that is being cut, and the head.
function drawHead(g) {
  const s = view.state, ratio = window.devicePixelRatio || 1;
  if (!s) return;
  const x = X(s.head.x), y = Y(s.head.y);
  if (s.moving && s.depth > 0) {
    g.strokeStyle = colour(s.depth, Math.max(deepestDrawn, s.depth));
    g.lineWidth = Math.max(widthInches(s.depth) * place.scale, ratio);
    g.lineCap = 'round';
    g.beginPath();
    g.moveTo(X(s.from.x), Y(s.from.y));
    g.lineTo(x, y);
    g.stroke();
  }
  g.strokeStyle = s.halted ? '#b3261e' : '#1f5f99';
  g.lineWidth = 2 * ratio;
  g.beginPath();
  g.arc(x, y, 6 * ratio, 0, 7);
  for (const [dx, dy] of [[1, 0], [-1, 0], [0, 1], [0, -1]]) {
    g.moveTo(x + dx * 6 * ratio, y + dy * 6 * ratio);
    g.lineTo(x + dx * 12 * ratio, y + dy * 12 * ratio);
  }
  g.stroke();
  if (s.depth > 0) {
    g.fillStyle = g.strokeStyle;
    g.beginPath();
    g.arc(x, y, 2.5 * ratio, 0, 7);
    g.fill();
  }
}

function draw() {
  due = false;
  if (!view.hello || !canvas.clientWidth) return;
  const now = performance.now();
  let deepest = 0;
  if (!redraw) {
    deepest = deepestDrawn;
    for (let i = drawn; i < view.strokes.length; ++i) deepest = Math.max(deepest, view.strokes[i][4]);
    // A new darkest tone changes all the others. On a long job they wait until that costs little.
    if (deepest > deepestDrawn) {
      if (now - redrawnMs > 20 * redrawCostMs) redraw = true; else setTimeout(ask, 50);
    }
    if (at('close').checked && drawn < view.strokes.length) redraw = true;
  }
  if (redraw) {
    redraw = false;
    deepestDrawn = view.strokes.reduce((most, s) => Math.max(most, s[4]), 0);
    layOut();
    drawGround();
    drawStrokes(0);
    redrawnMs = performance.now();
    redrawCostMs = redrawnMs - now;
  } else if (drawn < view.strokes.length) {
    drawStrokes(drawn);
  }
  const g = canvas.getContext('2d');
  g.drawImage(layers.ground.canvas, 0, 0);
  if (at('travels').checked) g.drawImage(layers.travel.canvas, 0, 0);
  g.drawImage(layers.cuts.canvas, 0, 0);
  if (!view.withoutHead) drawHead(g);
}
function ask() {
  if (!due) { due = true; requestAnimationFrame(draw); }
}
function askAll() { redraw = true; ask(); }
view.askAll = askAll;
view.isDrawn = () => !due && !redraw && drawn === view.strokes.length;
