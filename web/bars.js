// SPDX-License-Identifier: MIT
// Coefficients in pairs, drawn again on a linear or a logarithmic axis.

class Bars {
  constructor(data, drawing) {
    this.data = data;
    this.drawing = drawing;
    this.log = data.logY;
    this.bars = data.bars.map(bar => [number(bar.golden), number(bar.regression)]);
  }

  axis() {
    const values = this.bars.flat().filter(Number.isFinite);
    const place = panelPlace(0, 1);
    let low = Math.min(...values);
    let high = Math.max(...values);
    if (this.log) {
      low = 10 ** Math.floor(Math.log10(low));
      high = 10 ** Math.ceil(Math.log10(high));
      return makeAxis(low, high > low ? high : 10 * low, place.bottom, place.top, LOG);
    }
    const wide = widened(Math.min(low, 0), Math.max(high, 0));
    return makeAxis(low < 0 ? wide[0] : 0, high > 0 || low >= 0 ? wide[1] : 0, place.bottom, place.top);
  }

  draw() {
    const panel = this.drawing.querySelector('g.panel');
    const y = this.axis();
    drawLabels(panel, this.data.panels[0], y, 5);
    const base = y.place(this.log ? y.low : 0);
    ['golden', 'regression'].forEach((side, which) => {
      const rects = panel.querySelectorAll(':scope > rect.' + side);
      const values = this.bars.map(bar => bar[which]).filter(Number.isFinite);
      rects.forEach((rect, i) => {
        const tip = y.place(values[i]);
        set(rect, {y: pixel(Math.min(base, tip)), height: pixel(Math.max(Math.abs(base - tip), 0.8))});
      });
    });
  }
}

// Whether all values have a logarithm.
const barsCanLog = data => {
  const values = data.bars.flatMap(bar => [number(bar.golden), number(bar.regression)]).filter(Number.isFinite);
  return values.length > 0 && values.every(value => value > 0);
};
