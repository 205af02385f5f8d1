// Formats in the manner of printf, with %@ for objects.
(function (prelude) {
  'use strict';

  // The value's position, flags, width, precision, size in C and kind.
  const specifier = new RegExp(String.raw`%(?:(\d+)\$)?([-+ 0#']*)(\*|\d+)?(?:\.(\*|\d+)?)?` +
      '(?:hh|h|ll|l|q|L|z|t|j)?([@dDiuUfFeEgGaAxXoOcCsSp%])', 'g');

  function exponent(number, precision, isUpper) {
    const text = number.toExponential(precision).replace(/e([-+])(\d)$/, 'e$10$2');
    return isUpper ? text.toUpperCase() : text;
  }
  function general(number, precision, flags) {
    const digits = precision === 0 ? 1 : precision ?? 6;
    if (number === 0) return '0';
    const power = Math.floor(Math.log10(Math.abs(number)));
    const rounded = Number(number.toPrecision(digits));
    const text = power < -4 || rounded >= 10 ** digits
        ? exponent(number, digits - 1, false) : number.toFixed(Math.max(0, digits - 1 - power));
    return flags.includes('#') || !text.includes('.') ? text
        : text.replace(/\.?0+(e|$)/, '$1');
  }
  function real(value, kind, precision, flags) {
    const number = Number(value ?? 0);
    if (!Number.isFinite(number)) return isNaN(number) ? 'nan' : number < 0 ? '-inf' : 'inf';
    const places = Math.min(precision ?? 6, 100);
    const text = kind === 'f' || kind === 'F' ? fixed(number, places)
        : kind === 'e' || kind === 'E' ? exponent(number, places, kind === 'E')
        : general(number, precision === undefined ? undefined : places, flags);
    return kind === 'G' ? text.toUpperCase() : text;
  }
  const fixed = (number, places) => Math.abs(number) < 1e21 ? number.toFixed(places)
      : BigInt(number).toString() + (places > 0 ? '.' + '0'.repeat(places) : '');

  // A number that is none, such as NaN, is 0, as after a conversion in C.
  function whole(value) {
    if (typeof value === 'bigint') return value;
    const number = Math.trunc(Number(prelude.isString(value) ? NaN : value ?? 0));
    return Number.isFinite(number) ? BigInt(number) : 0n;
  }
  function unsigned(value, radix) {
    const number = whole(value);
    const bits = number < -0x80000000n ? 64 : 32;
    return (number < 0n ? BigInt.asUintN(bits, number) : number).toString(radix);
  }

  function convert(kind, value, precision, flags) {
    switch (kind) {
      case '@':
      case 's':
      case 'S': {
        const text = value === null || value === undefined ? '(null)' : descriptionOf(value);
        return precision === undefined ? text : text.slice(0, precision);
      }
      case 'd': case 'D': case 'i':
        return digits(whole(value).toString(), precision);
      case 'u': case 'U': return digits(unsigned(value, 10), precision);
      case 'x': return (flags.includes('#') ? '0x' : '') + digits(unsigned(value, 16), precision);
      case 'X':
        return (flags.includes('#') ? '0X' : '') +
            digits(unsigned(value, 16).toUpperCase(), precision);
      case 'o': case 'O': return digits(unsigned(value, 8), precision);
      case 'c': case 'C':
        return prelude.isString(value) ? String(value).slice(0, 1)
            : String.fromCharCode(Number(value ?? 0));
      case 'p': return '0x' + unsigned(prelude.rootObject.hash.call(value), 16);
      default: return real(value, kind, precision, flags);
    }
  }
  const descriptionOf = value =>
      prelude.isString(value) ? String(value)
      : typeof value === 'object' && typeof value.description === 'function'
          ? String(value.description()) : prelude.description(value);
  const digits = (text, precision = 0) =>
      text.startsWith('-') ? '-' + text.slice(1).padStart(precision, '0')
                           : text.padStart(precision, '0');

  function pad(text, kind, flags, width, hasPrecision) {
    const isNumber = !'@sScCp'.includes(kind);
    if (isNumber && !text.startsWith('-') && 'dDifFeEgG'.includes(kind)) {
      if (flags.includes('+')) text = '+' + text;
      else if (flags.includes(' ')) text = ' ' + text;
    }
    if (text.length >= width) return text;
    if (flags.includes('-')) return text.padEnd(width);
    const isZeros = flags.includes('0') && isNumber &&
        !(hasPrecision && 'dDiuUxXoO'.includes(kind)) && !/[in]/.test(text);
    if (!isZeros) return text.padStart(width);
    const [, sign, rest] = text.match(/^([-+ ]?(?:0[xX])?)(.*)$/);
    return sign + rest.padStart(width - sign.length, '0');
  }

  const maxWidth = 1 << 20;

  prelude.format = (format, values) => {
    let next = 0;
    const take = () => values[next++];
    const size = text => {
      const number = text === '*' ? Math.trunc(Number(take())) : Number(text);
      if (Math.abs(number) <= maxWidth) return number;
      throw prelude.exception('NSInvalidArgumentException', `the width ${number} is too large`);
    };
    return format.replace(specifier, (all, position, flags, width, precision, kind) => {
      if (kind === '%') return '%';
      let columns = width === undefined ? 0 : size(width);
      if (columns < 0) [columns, flags] = [-columns, flags + '-'];
      const hasPrecision = /\.(\*|\d*)(?:hh|h|ll|l|q|L|z|t|j)?[^\d]$/.test(all);
      let places = precision === undefined ? (hasPrecision ? 0 : undefined) : size(precision);
      if (places < 0) places = undefined;
      const value = position ? values[position - 1] : take();
      return pad(convert(kind, value, places, flags), kind, flags, columns, hasPrecision);
    });
  };
})
