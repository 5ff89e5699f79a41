// SPDX-License-Identifier: MIT
// Curves over a shared x axis, drawn again for another stretch of it or in another way.

const EMPTY = [];

class Waves {
  constructor(data, drawing) {
    this.data = data;
    this.drawing = drawing;
    this.panels = data.panels.map(unpackPanel);
    this.log = data.x.log;
    this.mode = 'both'; // or 'difference' or 'magnified'
    this.low = data.x.low;
    this.high = data.x.high;
  }

  get whole() {
    return [this.data.x.low, this.data.x.high];
  }

  axis() {
    return makeAxis(this.low, this.high, LEFT, RIGHT, this.log ? LOG : LINEAR);
  }

  draw() {
    this.x = this.axis();
    this.panels.forEach((panel, i) => this.drawPanel(panel, i));
    const ticks = ticksOf(this.x, 8);
    const labels = labelTicks(ticks, shortUnit(this.data.x.unit), this.x.scale);
    const bottom = panelPlace(this.panels.length - 1, this.panels.length).stripBottom;
    const farthest = text => WIDTH - textWidth(text) / 2;
    putTicks(this.drawing.querySelector('g.ticks-x'), labels.texts, i => (
      {x: pixel(Math.min(this.x.place(ticks[i]), farthest(labels.texts[i]))), y: bottom + 15,
        'text-anchor': 'middle'}));
    write(this.drawing, 'text.unit-x', axisTitle(this.data.x.name, labels));
    this.panels.forEach((_, i) => {
      const place = panelPlace(i, this.panels.length);
      draw(this.part(i), 'path.grid-x', ticks.map(tick => {
        const at = pixel(this.x.place(tick));
        return bothPlots(at, place);
      }).join(''));
    });
  }

  part(i) {
    return this.drawing.querySelector(`g.panel[data-panel="${i}"]`);
  }

  drawPanel(panel, i) {
    const part = this.part(i);
    const place = panelPlace(i, this.panels.length);
    const curves = this.curvesOf(panel);
    const y = makeAxis(...widened(...this.rangeOf(curves)), place.bottom, place.top);
    drawLabels(part, panel, y, this.panels.length === 1 ? 5 : 4);
    write(part, 'text.name', shortened(panel.name, 60) + this.modeNote(panel));
    const gaps = ['golden', 'regression'].map(side => {
      const curve = curves[side];
      const [from, to] = this.stretch(curve.x);
      const paths = linePaths(curve.x, curve.y, from, to, this.x, y, place.top);
      draw(part, 'path.' + side, paths.line);
      return paths.gaps;
    });
    draw(part, 'path.gaps', gaps.join(''));
    this.drawWorst(part, panel, place);
    this.drawUnjudged(part, panel, place);
    const strip = stripPaths(panel.errors, this.x, LEFT, RIGHT, place.stripBottom, STRIP);
    draw(part, 'path.error', strip.fails);
    draw(part, 'path.error-pass', strip.passes);
    draw(part, 'path.error-nan', strip.noNumbers);
    write(part, 'text.strip-top', strip.top > 0 ? withUnit(strip.top, stripUnit(panel.errors.unit), 3) : '');
  }

  modeNote(panel) {
    if (this.mode === 'difference') return ': regression minus golden';
    return this.mode === 'magnified' ? ': difference drawn × ' + general(panel.magnified, 6) : '';
  }

  drawWorst(part, panel, place) {
    const inView = panel.worst !== null && panel.worst >= this.low && panel.worst <= this.high;
    const at = inView ? pixel(this.x.place(panel.worst)) : '';
    draw(part, 'path.worst', inView ? bothPlots(at, place) : '');
    const label = part.querySelector('text.worst-label');
    if (!label) return;
    label.setAttribute('visibility', inView ? 'visible' : 'hidden');
    const half = textWidth(label.textContent) / 2;
    const first = LEFT + textWidth(part.querySelector('text.name').textContent, 13) + 16 + half;
    label.setAttribute('x', pixel(Math.max(first, Math.min(Number(at), RIGHT - half))));
  }

  drawUnjudged(part, panel, place) {
    const inside = place => Math.min(Math.max(place, LEFT), RIGHT);
    const stretches = [];
    for (const {from, to, reason} of panel.unjudged) {
      if (!(to >= this.low && from <= this.high)) continue;
      const end = inside(this.x.place(to));
      const begin = Math.min(inside(this.x.place(from)), end - 3);
      const stretch = svg('g', {class: 'stretch'});
      stretch.append(svg('title', {}, 'not judged: ' + reason));
      for (const [top, bottom] of [[place.top, place.bottom], [place.stripTop, place.stripBottom]]) {
        const width = pixel(end - begin);
        stretch.append(svg('rect', {class: 'hatch', x: pixel(begin), y: top, width, height: bottom - top}));
      }
      stretches.push(stretch);
    }
    part.querySelector('g.unjudged').replaceChildren(...stretches);
  }

  // What is drawn as golden and as regression.
  curvesOf(panel) {
    if (this.mode === 'both') return panel;
    panel.difference ??= differenceOf(panel);
    if (this.mode === 'difference') return {golden: {x: EMPTY, y: EMPTY}, regression: panel.difference};
    panel.magnified ??= magnification(panel);
    return {golden: panel.golden, regression: magnifiedCurve(panel)};
  }

  // The points of a column that are drawn: those in view, and the ones before and behind.
  stretch(x) {
    if (x.rises === undefined) x.rises = rises(x);
    if (x.rises) return [Math.max(firstFrom(x, this.low) - 1, 0), Math.min(firstAfter(x, this.high) + 1, x.length)];
    let from = x.length;
    let to = 0;
    for (let i = 0; i < x.length; ++i) {
      if (x[i] >= this.low && x[i] <= this.high) {
        from = Math.min(from, i);
        to = i + 1;
      }
    }
    return from < to ? [Math.max(from - 1, 0), Math.min(to + 1, x.length)] : [0, 0];
  }

  rangeOf(curves) {
    let low = Infinity;
    let high = -Infinity;
    for (const curve of [curves.golden, curves.regression]) {
      const [from, to] = this.stretch(curve.x);
      for (let i = from; i < to; ++i) {
        const value = curve.y[i];
        if (value < low && value > -Infinity) low = Math.max(value, -1e300);
        if (value > high && value < Infinity) high = Math.min(value, 1e300);
      }
    }
    return [low, high];
  }

  // What stands below the crosshair, a text for each panel.
  readout(x) {
    const parts = [`${this.data.x.name} ${withUnit(x, this.data.x.unit, 6)}`];
    for (const panel of this.panels) {
      const golden = valueAt(panel.golden, x);
      const regression = valueAt(panel.regression, x);
      const difference = turned(regression - golden, panel.unit);
      parts.push(`${panel.name}: golden ${withUnit(golden, panel.unit, 6)}, regression ` +
        `${withUnit(regression, panel.unit, 6)}, difference ${withUnit(difference, panel.unit)}`);
    }
    return parts.join(' · ');
  }

  // The stretch around the worst error, wide enough to show what goes on.
  worstStretch() {
    const panel = this.panels.find(p => p.worst !== null);
    if (!panel) return null;
    const {from, to} = panel.errors;
    const x = to === null ? panel.golden.x : from;
    if (this.log) return [panel.worst / 2, panel.worst * 2];
    const near = x.rises ?? rises(x) ? Math.min(firstFrom(x, panel.worst), x.length - 1) : 0;
    const step = x.length > 10 ? (x[Math.min(near + 5, x.length - 1)] - x[Math.max(near - 5, 0)]) / 8 : 0;
    const room = step > 0 ? step * 6 : (this.data.x.high - this.data.x.low) / 40;
    return [panel.worst - room, panel.worst + room];
  }
}

// A line through the plot and its strip.
const bothPlots = (at, place) => `M${at} ${place.top}V${place.bottom}M${at} ${place.stripTop}V${place.stripBottom}`;

const unpackPanel = packed => {
  const golden = {x: column(packed.golden.x), y: column(packed.golden.y)};
  const regression = {x: column(packed.regression.x) ?? golden.x, y: column(packed.regression.y)};
  const errors = {...packed.errors, from: column(packed.errors.from), to: column(packed.errors.to),
    error: column(packed.errors.error), fails: column(packed.errors.fails)};
  return {...packed, golden, regression, errors};
};

const axisTitle = (name, labels) => {
  const unit = labels.unit ? ` (${labels.unit})` : '';
  return name + unit + (labels.offset ? ' from ' + labels.offset : '');
};
