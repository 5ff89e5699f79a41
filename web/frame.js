// SPDX-License-Identifier: MIT
// The places of the parts of a drawing, which the program and this script share (src/report/svg.h).

const WIDTH = 960;
const LEFT = 88;
const RIGHT = 944;
const FIRST_TOP = 26;
const HEAD = 22;
const GAP = 20;
const STRIP = 48;
const BELOW = 12;
const PLOTS = [240, 180, 150];

// Where panel i of n stands: the plot from top to bottom, the strip from stripTop to stripBottom.
const panelPlace = (i, n) => {
  const plot = PLOTS[Math.min(n, PLOTS.length) - 1];
  const head = FIRST_TOP + i * (HEAD + plot + GAP + STRIP + BELOW);
  const top = head + HEAD;
  const stripTop = top + plot + GAP;
  return {head, top, bottom: top + plot, stripTop, stripBottom: stripTop + STRIP};
};

const write = (parent, selector, text) => {
  const element = parent.querySelector(selector);
  if (element) element.textContent = text;
};

const draw = (parent, selector, path) => {
  const element = parent.querySelector(selector);
  if (element) element.setAttribute('d', path);
};

// Replaces the texts of a group of tick labels.
const putTicks = (group, texts, place) => {
  const labels = texts.map((text, i) => svg('text', {class: 'tick', ...place(i)}, text));
  group.replaceChildren(...labels);
};

// The first characters of a name that may be of any length.
const shortened = (text, most) => {
  const characters = Array.from(text);
  return characters.length <= most ? text : characters.slice(0, most - 1).join('') + '…';
};

const shortUnit = unit => ({text: shortened(unit.text, 8), prefix: unit.prefix});

// There is no room for a long unit beside a number of the strip: its name tells it.
const stripUnit = unit =>
  (unit.prefix || new TextEncoder().encode(unit.text).length <= 3 ? unit : {text: '', prefix: false});

// About how wide a text is drawn.
const textWidth = (text, size = 12) => 0.56 * size * Array.from(text).length;

// Ticks, unit and grid of a panel's y axis.
const drawLabels = (part, panel, axis, want) => {
  const ticks = ticksOf(axis, want);
  const labels = labelTicks(ticks, shortUnit(panel.unit), axis.scale);
  putTicks(part.querySelector('g.ticks-y'), labels.texts, i => (
    {x: LEFT - 6, y: pixel(axis.place(ticks[i]) + 4), 'text-anchor': 'end'}));
  draw(part, 'path.grid-y', ticks.map(tick => `M${LEFT} ${pixel(axis.place(tick))}H${RIGHT}`).join(''));
  write(part, 'text.unit-y', labels.unit);
  write(part, 'text.offset-y', labels.offset ? 'y from ' + labels.offset : '');
};
