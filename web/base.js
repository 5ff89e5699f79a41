// SPDX-License-Identifier: MIT
'use strict';
// Elements and columns of numbers. Names of the files reach the page through textContent and setAttribute alone.
const SVG = 'http://www.w3.org/2000/svg';

const set = (element, attributes) => {
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  return element;
};

const html = (name, attributes, text) => {
  const element = set(document.createElement(name), attributes);
  if (text !== undefined) element.textContent = text;
  return element;
};

const svg = (name, attributes, text) => {
  const element = set(document.createElementNS(SVG, name), attributes);
  if (text !== undefined) element.textContent = text;
  return element;
};

// A column of a figure's data: numbers of 4 or 8 bytes or flags, low byte first whatever the machine is.
const column = packed => {
  if (packed === null) return null;
  const text = atob(packed.d);
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
  if (packed.t === 'u1') return bytes;
  if (new Uint8Array(Uint16Array.of(1).buffer)[0] === 1) {
    return packed.t === 'f4' ? new Float32Array(bytes.buffer) : new Float64Array(bytes.buffer);
  }
  const view = new DataView(bytes.buffer);
  const size = packed.t === 'f4' ? 4 : 8;
  const values = new Float64Array(bytes.length / size);
  for (let i = 0; i < values.length; ++i) {
    values[i] = size === 4 ? view.getFloat32(i * 4, true) : view.getFloat64(i * 8, true);
  }
  return values;
};

// A number that JSON has no form for comes as a text.
const number = value => {
  if (typeof value === 'number') return value;
  return value === 'inf' ? Infinity : value === '-inf' ? -Infinity : NaN;
};

// The first index of a rising column at which the value is not below v.
const firstFrom = (values, v) => {
  let low = 0;
  let high = values.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (values[middle] < v) low = middle + 1;
    else high = middle;
  }
  return low;
};

// The first index behind those at which it is not above v.
const firstAfter = (values, v) => {
  let low = 0;
  let high = values.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (values[middle] <= v) low = middle + 1;
    else high = middle;
  }
  return low;
};

const rises = values => {
  for (let i = 1; i < values.length; ++i) if (!(values[i] >= values[i - 1])) return false;
  return true;
};
