'use strict';
// What the page knows. Tests look at it, too.
const view = {hello: null, state: null, strokes: [], lines: [], connection: 'waiting',
              patienceSeconds: 5};
window.view = view;
const at = id => document.getElementById(id);
const show = (id, text) => { if (at(id).textContent !== text) at(id).textContent = text; };
// Without the minus sign of a rounded zero.
const inches = (value, digits = 4) => value.toFixed(digits).replace(/^-(0\.0*)$/, '$1');
