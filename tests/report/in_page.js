// SPDX-License-Identifier: MIT
// What the browser tests ask a page from inside.

// The lines of path data, with absolute points.
const points = d => {
  const lines = [];
  const words = d.match(/[a-z]|-?[0-9.]+/gi) ?? [];
  let line = null, x = 0, y = 0, command = '', i = 0;
  const next = () => Number(words[i++]);
  while (i < words.length) {
    if (/[a-z]/i.test(words[i])) command = words[i++];
    const isRelative = command === command.toLowerCase();
    switch (command.toLowerCase()) {
      case 'z':
        line.push(line[0]);
        continue;
      case 'm':
        x = next() + (isRelative ? x : 0);
        y = next() + (isRelative ? y : 0);
        lines.push(line = [[x, y]]);
        command = isRelative ? 'l' : 'L';
        continue;
      case 'h':
        x = next() + (isRelative ? x : 0);
        break;
      case 'v':
        y = next() + (isRelative ? y : 0);
        break;
      default:
        if (command === 'a') i += 5;
        x = next() + (isRelative ? x : 0);
        y = next() + (isRelative ? y : 0);
    }
    line.push([x, y]);
  }
  return lines;
};

// All that is drawn in a figure.
const shapes = drawing => Array.from(drawing.querySelectorAll('path, rect, text'), element => ({
  name: element.tagName + '.' + element.getAttribute('class'),
  text: element.tagName === 'text' ? element.textContent : '',
  lines: element.tagName === 'path' ? points(element.getAttribute('d'))
    : [['x', 'y', 'width', 'height'].map(name => [Number(element.getAttribute(name)), 0])],
}));

const toSegment = ([x, y], [ax, ay], [bx, by]) => {
  const length = (bx - ax) ** 2 + (by - ay) ** 2;
  const t = length === 0 ? 0 : Math.min(Math.max(((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / length, 0), 1);
  return Math.hypot(x - ax - t * (bx - ax), y - ay - t * (by - ay));
};
const toLine = (point, line) =>
  line.reduce((least, p, i) => Math.min(least, toSegment(point, line[Math.max(i - 1, 0)], p)), Infinity);

// How far two shapes are apart at most, in pixels; infinite for shapes that say or are something else.
const apart = (a, b) => {
  if (a.name !== b.name || a.text !== b.text || a.lines.length !== b.lines.length) return Infinity;
  const distances = a.lines.map((line, i) => Math.max(
    ...line.map(p => toLine(p, b.lines[i])), ...b.lines[i].map(p => toLine(p, line))));
  return Math.max(0, ...distances);
};

// Of each figure: how many shapes the script drew, and those that the program drew in another way.
const redrawn = () => page.figures.views.map(view => {
  const before = shapes(view.svg);
  view.wake().draw();
  const after = shapes(view.svg);
  const other = after.filter((shape, i) => !before[i] || !(apart(shape, before[i]) <= 0.2));
  return [after.length, before.length - after.length, other.map(shape => shape.name + ' ' + shape.text)];
});

const light = color => {
  const [r, g, b] = color.match(/[0-9.]+/g).slice(0, 3).map(value => {
    const part = value / 255;
    return part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
  });
  return 0.2126 * r + 0.7152 * g + 0.0722 * b;
};
const ground = element => {
  const color = getComputedStyle(element).backgroundColor;
  return /, 0\)$/.test(color) && element.parentElement ? ground(element.parentElement) : color;
};

// Elements with text that has too little contrast.
const poorContrast = () => Array.from(document.body.querySelectorAll('*')).filter(element => {
  const hasText = Array.from(element.childNodes).some(node => node.nodeType === 3 && node.data.trim());
  if (!hasText || element.closest('script, style')) return false;
  const style = getComputedStyle(element);
  const levels = [light(element.closest('svg') ? style.fill : style.color), light(ground(element))];
  return (Math.max(...levels) + 0.05) / (Math.min(...levels) + 0.05) < 4.5;
}).map(element => element.outerHTML.slice(0, 100));

const count = selector => document.querySelectorAll(selector).length;

// What a reader who does not see the page would stumble over: names of the faults.
const stumbles = () => {
  const ids = Array.from(document.querySelectorAll('[id]'), element => element.id);
  const levels = Array.from(document.querySelectorAll('h1, h2, h3'), heading => Number(heading.tagName[1]));
  const misnamed = Array.from(document.querySelectorAll('.tools button')).filter(button =>
    /[a-z]/.test(button.textContent) &&
    !button.getAttribute('aria-label').split(' ').includes(button.textContent.split(' ').pop()));
  const faults = {
    'doubled id': ids.length !== new Set(ids).size,
    'no language': document.documentElement.lang !== 'en',
    'no title': document.title === '',
    'skipped heading': levels[0] !== 1 || levels.some((level, i) => i > 0 && level > levels[i - 1] + 1),
    'figure without a table': count('figure') !== count('figure .numbers table:first-of-type'),
    'order of its own': count('[tabindex]:not([tabindex="0"])') !== 0,
    'head without scope': count('th:not([scope])') !== 0,
    'button with another name': misnamed.length !== 0,
  };
  return Object.keys(faults).filter(name => faults[name]);
};

// What hostile text may have become: scripts, foreign elements, attributes that run or style.
const intruders = () => [count('script'), count('img, iframe, object, embed, link, base'),
  Array.from(document.querySelectorAll('*')).filter(element =>
    Array.from(element.attributes).some(attribute => /^on|^style$/.test(attribute.name))).length];

const drag = (drawing, from, to) => {
  const box = drawing.getBoundingClientRect();
  const send = (type, x) => drawing.dispatchEvent(new PointerEvent(type, {bubbles: true, pointerId: 1, button: 0,
    clientX: box.left + x * box.width / 960, clientY: box.top + 100}));
  drawing.setPointerCapture = () => {}; // of a pointer that is none
  send('pointerdown', from);
  send('pointermove', (from + to) / 2);
  send('pointerup', to);
};
