// SPDX-License-Identifier: MIT
// The difference of two curves, to tell them apart where they lie on each other. Nothing here is judged: the
// errors that were are in the strip.

// A phase differs the shorter way round.
const turned = (difference, unit) =>
  (unit.text === '°' ? difference - 360 * Math.round(difference / 360) : difference);

// The value of a curve at x, on the line between its points; NaN beside it.
const valueAt = ({x, y}, at) => {
  if (x.rises === undefined) x.rises = rises(x);
  if (!x.rises) return nearestValue(x, y, at);
  const i = firstFrom(x, at);
  if (i === x.length || (i === 0 && x[0] !== at)) return NaN;
  if (x[i] === at) return y[i];
  return y[i - 1] + (y[i] - y[i - 1]) * (at - x[i - 1]) / (x[i] - x[i - 1]);
};

const nearestValue = (x, y, at) => {
  let nearest = -1;
  for (let i = 0; i < x.length; ++i) {
    if (nearest < 0 || Math.abs(x[i] - at) < Math.abs(x[nearest] - at)) nearest = i;
  }
  return nearest < 0 ? NaN : y[nearest];
};

// At all points of both; of sweeps that go to and fro point by point, as they are judged.
const differenceOf = panel => {
  const {golden, regression, unit} = panel;
  if (golden.x === regression.x || !rises(golden.x) || !rises(regression.x)) {
    const n = Math.min(golden.y.length, regression.y.length);
    return {x: golden.x.slice(0, n),
      y: Float64Array.from({length: n}, (_, i) => turned(regression.y[i] - golden.y[i], unit))};
  }
  const x = [];
  const y = [];
  let i = 0;
  let j = 0;
  while (i < golden.x.length || j < regression.x.length) {
    const a = i < golden.x.length ? golden.x[i] : Infinity;
    const b = j < regression.x.length ? regression.x[j] : Infinity;
    if (!(Math.min(a, b) < Infinity)) break;
    const g = a <= b ? golden.y[i] : between(golden, i, b);
    const r = b <= a ? regression.y[j] : between(regression, j, a);
    x.push(Math.min(a, b));
    y.push(turned(r - g, unit));
    if (a <= b) ++i;
    if (b <= a) ++j;
  }
  return {x, y};
};

// On the line from point i - 1 to point i; nothing before the first and behind the last.
const between = ({x, y}, i, at) => {
  if (i === 0 || i >= x.length) return NaN;
  return y[i - 1] + (y[i] - y[i - 1]) * (at - x[i - 1]) / (x[i] - x[i - 1]);
};

const spread = values => {
  let low = Infinity;
  let high = -Infinity;
  for (const v of values) {
    if (!Number.isFinite(v)) continue;
    low = Math.min(low, v);
    high = Math.max(high, v);
  }
  return {low, high};
};

// The power of ten by which the largest difference fills about a third of the height of the curve.
const magnification = panel => {
  const curve = spread(panel.golden.y);
  const difference = spread(panel.difference.y);
  const most = Math.max(Math.abs(difference.low), Math.abs(difference.high));
  const height = curve.high - curve.low || Math.abs(curve.high);
  const factor = 10 ** Math.floor(Math.log10(height / 3 / most));
  return Number.isFinite(factor) && factor >= 1 ? factor : 1;
};

const magnifiedCurve = panel => {
  panel.magnifiedCurve ??= {
    x: panel.difference.x,
    y: Array.from(panel.difference.y, (d, i) => valueAt(panel.golden, panel.difference.x[i]) + panel.magnified * d),
  };
  return panel.magnifiedCurve;
};
