// SPDX-License-Identifier: MIT
// Numbers with their units, as the program writes them (src/report/units.cpp).

const PREFIXES = ['a', 'f', 'p', 'n', 'µ', 'm', '', 'k', 'M', 'G', 'T'];
const LOWEST_POWER = -18;
const HIGHEST_POWER = 12;

const hasPrefix = power => power >= LOWEST_POWER && power <= HIGHEST_POWER;
const siPrefix = power => PREFIXES[(power - LOWEST_POWER) / 3];

// So many digits without trailing zeros; an exponent of two digits where there are more places than digits.
const general = (value, digits) => {
  const [mantissa, exponent] = value.toExponential(digits - 1).split('e');
  const power = Number(exponent);
  if (power >= -4 && power < digits) return String(Number(value.toPrecision(digits)));
  return String(Number(mantissa)) + 'e' + (power < 0 ? '-' : '+') + String(Math.abs(power)).padStart(2, '0');
};

const joined = (text, unit) => (unit === '' || unit === '°' ? text + unit : text + ' ' + unit);

const withPrefix = (value, unit, digits) => {
  const magnitude = Math.abs(value);
  let power = 3 * Math.floor(Math.log10(magnitude) / 3);
  // What rounds up to 1000 belongs to the next prefix.
  power += Math.round(magnitude / 10 ** (power - digits + 3)) >= 10 ** digits ? 3 : 0;
  if (!hasPrefix(power)) return '';
  const scaled = power < 0 ? value * 10 ** -power : value / 10 ** power;
  return joined(general(scaled, digits), siPrefix(power) + unit);
};

const withUnit = (value, unit, digits = 4) => {
  if (Number.isNaN(value)) return 'NaN';
  if (!Number.isFinite(value)) return joined(value > 0 ? '∞' : '-∞', unit.text);
  const prefixed = unit.prefix && value !== 0 ? withPrefix(value, unit.text, digits) : '';
  return prefixed || joined(value === 0 ? '0' : general(value, digits), unit.text);
};

// Without the sign of a zero.
const fixed = (value, decimals) => value.toFixed(decimals).replace(/^-(?=[0.]*$)/, '');
