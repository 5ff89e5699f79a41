// SPDX-License-Identifier: MIT
// Lines and error strips as path data. Of all points in one column of pixels those are drawn that make the same
// picture (src/report/reduce.h), so that a redraw takes as long as the drawing is wide, not as the file is long.

// The column of a place. Rounding, or numbers of 4 bytes, must not move what stands just at an edge to another one.
const EDGE = 1 / 1024;
const columnAt = place => Math.floor(place + EDGE);
const columnBefore = place => Math.ceil(place - EDGE) - 1;

// Calls emit(x, y) for the first, lowest, highest, last and first non-finite point of each column.
const reduceColumns = (x, y, from, to, axis, emit) => {
  const columnOf = i => columnAt(axis.place(x[i]));
  let next = from < to ? columnOf(from) : 0;
  for (let i = from; i < to;) {
    const here = next;
    const hasPlace = Number.isFinite(here);
    let first = -1, lowest = -1, highest = -1, last = -1, gap = -1;
    do {
      if (hasPlace && Number.isFinite(y[i])) {
        if (first < 0) first = lowest = highest = i;
        if (y[i] < y[lowest]) lowest = i;
        if (y[i] > y[highest]) highest = i;
        last = i;
      } else if (gap < 0) {
        gap = i;
      }
      if (++i < to) next = columnOf(i);
    } while (i < to && (next === here || (!hasPlace && !Number.isFinite(next))));
    let before = -1;
    for (const index of [first, lowest, highest, last, gap].sort((a, b) => a - b)) {
      if (index > before) emit(x[index], y[index]);
      before = Math.max(before, index);
    }
  }
};

// A coordinate with one decimal at most. One that is far outside is cut, which clipping hides.
const pixel = place => {
  const inside = Number.isNaN(place) ? 0 : Math.min(Math.max(place, -99999), 99999);
  return String(Math.round(inside * 10) / 10);
};

// The line through the points from..to, and a mark at the upper edge for each that is no finite number.
const linePaths = (x, y, from, to, axisX, axisY, top) => {
  const line = [];
  const gaps = [];
  let run = 0; // points since the last break
  const close = () => {
    if (run === 1) line.push('h0'); // a dot, by its round ends
    run = 0;
  };
  reduceColumns(x, y, from, to, axisX, (px, py) => {
    const place = axisX.place(px);
    if (Number.isFinite(py) && Number.isFinite(place)) {
      line.push(run === 0 ? 'M' : run === 1 ? 'L' : ' ', pixel(place), ' ', pixel(axisY.place(py)));
      ++run;
      return;
    }
    close();
    if (Number.isFinite(place)) gaps.push('M', pixel(place), ' ', pixel(top), 'v7');
  });
  close();
  return {line: line.join(''), gaps: gaps.join('')};
};

const POINT_COLUMNS = 3; // that the bar of a point covers

// The largest error of each column of pixels: one shape for each run of columns that have an error.
const columnsPath = (heights, left, bottom) => {
  const path = [];
  let height = 0; // of the column before
  for (let i = 0; i <= heights.length; ++i) {
    const next = i < heights.length ? heights[i] : 0;
    if (next === height) continue;
    path.push(height === 0 ? `M${left + i} ${bottom}` : `H${left + i}`, 'V', pixel(bottom - next));
    if (next === 0) path.push('z');
    height = next;
  }
  return path.join('');
};

// Errors over the pixels from left to right: {top, fails, passes, noNumbers} where top is the largest finite
// error in view and the others are path data.
const stripPaths = (errors, axis, left, right, bottom, height) => {
  const width = right - left;
  const failing = new Float64Array(width);
  const passing = new Float64Array(width);
  const noNumber = new Float64Array(width);
  let top = 0;
  const {from, to, error, fails} = errors;
  for (let i = 0; i < error.length; ++i) {
    const a = axis.place(from[i]);
    const b = to === null ? a : axis.place(to[i]);
    if (!Number.isFinite(a) || !Number.isFinite(b)) continue;
    let first = columnAt(a);
    let last = Math.max(columnBefore(b), first);
    if (to === null && first >= left && first <= right) {
      first = Math.min(Math.max(first - 1, left), right - POINT_COLUMNS);
      last = first + POINT_COLUMNS - 1;
    }
    if (last < left || first >= right) continue;
    first = Math.max(first, left) - left;
    last = Math.min(last, right - 1) - left;
    const isNumber = Number.isFinite(error[i]);
    if (isNumber && error[i] > top) top = error[i];
    const into = !isNumber ? noNumber : fails !== null && fails[i] === 0 ? passing : failing;
    const value = isNumber ? error[i] : 1;
    for (let c = first; c <= last; ++c) if (value > into[c]) into[c] = value;
  }
  const scaled = values => values.map(v => (v > 0 ? Math.max(v / top * height, 1) : 0));
  return {
    top,
    fails: columnsPath(scaled(failing), left, bottom),
    passes: columnsPath(scaled(passing), left, bottom),
    noNumbers: columnsPath(noNumber.map(v => v * height), left, bottom),
  };
};
