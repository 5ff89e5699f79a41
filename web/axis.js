// SPDX-License-Identifier: MIT
// Axes, their ticks and labels, step by step as the program makes them (src/report/axis.cpp), so that a figure
// that is drawn again looks the same.

const SLACK = 1e-9; // of a step, for the tick that rounding puts behind the end
const ROUNDING = 1e-15; // of the number of steps, that dividing may have cost
const MOST_TICKS = 40;
const MOST_DECIMALS = 6;

const LINEAR = 'linear';
const LOG = 'log';
const SIGNED_LOG = 'signed-log';

const TRANSFORMS = {
  [LINEAR]: () => value => value,
  [LOG]: () => Math.log10,
  [SIGNED_LOG]: unit => value => {
    const magnitude = Math.abs(value) / unit;
    return magnitude <= 1 ? value / unit : Math.sign(value) * (1 + Math.log10(magnitude));
  },
};
const INVERSES = {
  [LINEAR]: () => value => value,
  [LOG]: () => value => 10 ** value,
  [SIGNED_LOG]: unit => value =>
    unit * (Math.abs(value) <= 1 ? value : Math.sign(value) * 10 ** (Math.abs(value) - 1)),
};

// From values to places and back.
const makeAxis = (low, high, atLow, atHigh, scale = LINEAR, unit = 1) => {
  const transform = TRANSFORMS[scale](unit);
  const inverse = INVERSES[scale](unit);
  const begin = transform(low);
  const width = transform(high) - begin;
  const room = atHigh - atLow;
  return {
    low, high, scale, unit,
    place: value => atLow + (transform(value) - begin) / width * room,
    value: place => inverse(begin + (place - atLow) / room * width),
  };
};

const widened = (low, high) => {
  if (low > high) return [0, 1];
  const largest = Math.max(Math.abs(low), Math.abs(high));
  const width = high - low;
  let room = 0.06 * width;
  if (width === 0) room = largest > 0 ? largest / 10 : 1;
  else if (width < 1e-14 * largest) room = 1e-14 * largest;
  return [low - room, high + room];
};

const linearTicks = (low, high, want) => {
  const raw = (high - low) / want;
  const power = 10 ** Math.floor(Math.log10(raw));
  const mantissa = raw / power;
  const step = power * (mantissa < 1.5 ? 1 : mantissa < 3.5 ? 2 : mantissa < 7.5 ? 5 : 10);
  const ticks = [];
  const last = high / step + SLACK + ROUNDING * Math.abs(high / step);
  const first = Math.ceil(low / step - SLACK - ROUNDING * Math.abs(low / step));
  for (let k = first; k <= last && ticks.length < MOST_TICKS; ++k) ticks.push(k * step + 0);
  return ticks;
};

const decades = (low, high, most) => {
  const first = Math.ceil(Math.log10(low) - SLACK);
  const last = Math.floor(Math.log10(high) + SLACK);
  const stride = Math.floor((last - first) / most) + 1;
  const ticks = [];
  for (let power = first; power <= last && ticks.length < MOST_TICKS; power += stride) ticks.push(10 ** power);
  return ticks;
};

const logTicks = (low, high, want) => {
  const whole = decades(low, high, 10);
  if (whole.length >= 3) return whole;
  const ticks = [];
  for (let power = Math.floor(Math.log10(low) + SLACK); ticks.length < MOST_TICKS; ++power) {
    for (const factor of [1, 2, 5]) {
      const tick = factor * 10 ** power;
      if (tick >= low * (1 - SLACK) && tick <= high * (1 + SLACK)) ticks.push(tick);
    }
    if (10 ** power > high) break;
  }
  return ticks.length >= 3 ? ticks : linearTicks(low, high, want);
};

const signedLogTicks = (high, unit) => {
  const positive = decades(unit, high, 4);
  return [...positive.map(tick => -tick), 0, ...positive].sort((a, b) => a - b);
};

const ticksOf = (axis, want) => {
  if (axis.scale === LOG) return logTicks(axis.low, axis.high, want);
  if (axis.scale === SIGNED_LOG) return signedLogTicks(axis.high, axis.unit);
  return linearTicks(axis.low, axis.high, want);
};

const commonPower = (largest, unit) => {
  if (largest === 0) return 0;
  const power = 3 * Math.floor(Math.log10(largest) / 3 + SLACK);
  return !unit.prefix && power >= -3 && power <= 3 ? 0 : power;
};

const scaledUnit = (power, unit) => {
  if (unit.prefix && hasPrefix(power)) return siPrefix(power) + unit.text;
  const factor = power === 0 ? '' : '10^' + power;
  return factor === '' || unit.text === '' ? factor + unit.text : factor + ' ' + unit.text;
};

const decimalsOf = (step, power) => {
  const scaled = step / 10 ** power;
  return scaled > 0 ? Math.max(0, -Math.floor(Math.log10(scaled) + SLACK)) : 0;
};

const labelTicks = (ticks, unit, scale) => {
  if (ticks.length === 0) return {texts: [], unit: '', offset: ''};
  if (scale !== LINEAR) return {texts: ticks.map(tick => withUnit(tick, unit)), unit: '', offset: ''};
  let largest = Math.max(...ticks.map(Math.abs));
  const step = ticks.length > 1 ? ticks[1] - ticks[0] : largest;
  let from = 0;
  let offset = '';
  let power = commonPower(largest, unit);
  if (decimalsOf(step, power) > MOST_DECIMALS) {
    from = ticks[0];
    largest = ticks[ticks.length - 1] - from;
    power = commonPower(largest, unit);
    offset = withUnit(from, unit, 15);
  }
  const decimals = Math.min(decimalsOf(step, power), MOST_DECIMALS);
  const texts = ticks.map(tick => fixed((tick - from) / 10 ** power, decimals));
  return {texts, unit: scaledUnit(power, unit), offset};
};
