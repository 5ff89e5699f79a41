// SPDX-License-Identifier: MIT
// Poles and zeros, drawn again on linear or signed-log axes.

const PLANE_TOP = 46;
const PLANE_SIDE = 480;
const POLE_KINDS = new Set([1, 3]);
const CANCELLED_KINDS = new Set([3, 4]);
const SHORTEST_ARROW = 12;

class Plane {
  constructor(data, drawing) {
    this.data = data;
    this.drawing = drawing;
    this.log = true; // of both signs
    this.roots = data.roots.map(root => (
      {...root, golden: root.golden?.map(number), regression: root.regression?.map(number)}));
    this.shown = this.axes();
  }

  axes() {
    const values = this.roots.flatMap(root => [...(root.golden ?? []), ...(root.regression ?? [])]);
    const sizes = values.filter(v => v !== 0 && Number.isFinite(v)).map(Math.abs);
    const [high, unit] = this.log ? planeDecades(sizes) : [Math.max(...sizes, 0) * 1.1 || 1, 1];
    const scale = this.log ? SIGNED_LOG : LINEAR;
    return {
      real: makeAxis(-high, high, LEFT, LEFT + PLANE_SIDE, scale, unit),
      imaginary: makeAxis(-high, high, PLANE_TOP + PLANE_SIDE, PLANE_TOP, scale, unit),
    };
  }

  draw() {
    const axes = this.axes();
    this.drawFrame(axes);
    this.drawRoots(axes);
    this.moveCallouts(axes);
    this.shown = axes;
  }

  drawFrame({real, imaginary}) {
    const end = PLANE_TOP + PLANE_SIDE;
    const ticks = ticksOf(real, 6);
    const texts = ticks.map(tick => withUnit(tick, {text: '', prefix: true}));
    draw(this.drawing, 'path.grid', ticks.map(tick =>
      `M${pixel(real.place(tick))} ${PLANE_TOP}V${end}` +
      `M${LEFT} ${pixel(imaginary.place(tick))}H${LEFT + PLANE_SIDE}`).join(''));
    const labels = ticks.flatMap((tick, i) => [
      svg('text', {class: 'tick', x: pixel(real.place(tick)), y: end + 15, 'text-anchor': 'middle'}, texts[i]),
      svg('text', {class: 'tick', x: LEFT - 6, y: pixel(imaginary.place(tick) + 4), 'text-anchor': 'end'},
        texts[i]),
    ]);
    this.drawing.querySelector('g.ticks').replaceChildren(...labels);
    const scale = this.log ? 'signed-log' : 'linear';
    write(this.drawing, 'text.unit-x', `real part, ${scale}; right half shaded`);
    write(this.drawing, 'text.unit-y', `imaginary part, ${scale}`);
  }

  drawRoots(axes) {
    const marks = [];
    for (const root of this.roots) {
      if (root.golden) marks.push(mark(root, spotOf(axes, root.golden), 'golden', 6.5));
    }
    for (const root of this.roots) {
      if (root.regression) marks.push(mark(root, spotOf(axes, root.regression), 'regression', 5));
      if (root.golden && root.regression) marks.push(arrow(spotOf(axes, root.golden), spotOf(axes, root.regression)));
    }
    this.drawing.querySelector('g.roots').replaceChildren(...marks.filter(Boolean));
  }

  // Numbers, of the root that is furthest off first, stay as far from their marks as they are.
  moveCallouts(axes) {
    const weight = root => (Number.isNaN(number(root.error)) ? Infinity : number(root.error));
    const failing = this.roots.filter(root => root.fails);
    failing.sort((a, b) => (weight(b) > weight(a)) - (weight(a) > weight(b)));
    const spots = failing.map(root => [markSpot(this.shown, root), markSpot(axes, root)]);
    const placed = spots.filter(pair => pair[0] !== null);
    this.drawing.querySelectorAll('text.callout[text-anchor="middle"]').forEach((callout, i) => {
      const [before, now] = placed[i];
      set(callout, {x: pixel(Number(callout.getAttribute('x')) + now.x - before.x),
        y: pixel(Number(callout.getAttribute('y')) + now.y - before.y)});
    });
  }
}

// Where a root is now, or was.
const markSpot = (axes, root) =>
  (root.regression && spotOf(axes, root.regression)) ?? (root.golden ? spotOf(axes, root.golden) : null);

// The decade above all coordinates, and the one below which the axis is linear (src/report/plane_places.h).
const planeDecades = sizes => {
  if (sizes.length === 0) return [1, 1e-3];
  const powers = sizes.map(Math.log10);
  const high = Math.ceil(Math.min(Math.max(...powers), 300) + 0.02);
  const low = Math.max(Math.floor(Math.min(...powers)), high - 9);
  return [10 ** high, 10 ** Math.min(low, high - 1)];
};

// Null of what is no number, which has no place.
const spotOf = ({real, imaginary}, point) => {
  const spot = {x: real.place(point[0]), y: imaginary.place(point[1])};
  return Number.isFinite(spot.x) && Number.isFinite(spot.y) ? spot : null;
};

const mark = (root, spot, side, size) => {
  if (spot === null) return null;
  const twice = 2 * size;
  const cross = `M${pixel(spot.x - size)} ${pixel(spot.y - size)}l${twice} ${twice}m0 -${twice}l-${twice} ${twice}`;
  const round = `a${size} ${size} 0 1 0 `;
  const circle = `M${pixel(spot.x - size)} ${pixel(spot.y)}${round}${twice} 0${round}-${twice} 0z`;
  const path = svg('path', {class: side, d: POLE_KINDS.has(root.kind) ? cross : circle, fill: 'none',
    stroke: side === 'golden' ? '#6aa9e4' : '#b3261e', 'stroke-width': side === 'golden' ? 4.5 : 1.6});
  if (CANCELLED_KINDS.has(root.kind)) set(path, {'stroke-dasharray': '3 2', 'stroke-opacity': 0.75});
  return path;
};

const arrow = (from, to) => {
  if (from === null || to === null) return null;
  const length = Math.hypot(to.x - from.x, to.y - from.y);
  if (!(length > SHORTEST_ARROW)) return null;
  const ux = (to.x - from.x) / length;
  const uy = (to.y - from.y) / length;
  const tip = {x: to.x - 6 * ux, y: to.y - 6 * uy};
  const point = (x, y) => `${pixel(x)} ${pixel(y)}`;
  const d = `M${point(from.x, from.y)}L${point(tip.x, tip.y)}` +
    `M${point(tip.x - 7 * ux - 4 * uy, tip.y - 7 * uy + 4 * ux)}L${point(tip.x, tip.y)}` +
    `L${point(tip.x - 7 * ux + 4 * uy, tip.y - 7 * uy - 4 * ux)}`;
  return svg('path', {class: 'arrow', d, fill: 'none', stroke: 'currentColor', 'stroke-opacity': 0.7});
};
