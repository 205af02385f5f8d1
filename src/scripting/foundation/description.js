// How a value is shown: by `print`, and as its description.
(function (prelude) {
  'use strict';

  const isPlain = value => Array.isArray(value) || prelude.isDictionary(value) &&
      !Object.hasOwn(value, 'toString');
  const inside = (key, value) =>
      typeof value === 'bigint' || typeof value === 'object' && value !== null && !isPlain(value)
          ? String(value) : value;

  // Dictionaries, lists of them and empty lists are shown as JSON.
  prelude.describe = value => {
    if (value instanceof Set) return prelude.description(value);
    if (isPlain(value) && (!Array.isArray(value) || value.length === 0 || value.some(isPlain))) {
      try {
        return JSON.stringify(value, inside);
      } catch {
        // It contains itself.
      }
    }
    return String(value);
  };

  const maxDepth = 100;
  const quoted = text => /^[\w./$:-]+$/.test(text) && !/[.:$-]/.test(text[0] ?? '')
      && !/[:-]/.test(text) ? text
      : `"${text.replace(/[\\"]/g, '\\$&').replaceAll('\n', '\\n').replaceAll('\t', '\\t')}"`;

  function lines(open, close, parts, separator, depth) {
    const indent = '    '.repeat(depth);
    const inner = parts.map(part => `${indent}    ${part}`).join(`${separator}\n`);
    const last = separator === ';' && parts.length > 0 ? ';' : '';
    return `${open}\n${inner}${last}${parts.length > 0 ? '\n' : ''}${indent}${close}`;
  }

  // Of a part of a list or dictionary.
  const part = (value, depth) =>
      prelude.isString(value) ? quoted(String(value)) : text(value, depth);

  const two = number => String(number).padStart(2, '0');
  const dateText = date => isNaN(date) ? 'invalid date' :
      `${date.getUTCFullYear()}-${two(date.getUTCMonth() + 1)}-${two(date.getUTCDate())} ` +
      `${two(date.getUTCHours())}:${two(date.getUTCMinutes())}:${two(date.getUTCSeconds())} +0000`;
  const bytesText = bytes =>
      `<${[...bytes].map(each => each.toString(16).padStart(2, '0')).join('')}>`;

  function text(value, depth) {
    if (depth > maxDepth) return '...';
    if (value === null || value === undefined) return '(null)';
    if (typeof value === 'boolean') return value ? '1' : '0';
    if (Array.isArray(value)) {
      return lines('(', ')', value.map(each => part(each, depth + 1)), ',', depth);
    }
    if (value instanceof Set) {
      return lines('{(', ')}', [...value].map(each => part(each, depth + 1)), ',', depth);
    }
    if (prelude.isDictionary(value)) {
      const entry = key => `${quoted(key)} = ${part(value[key], depth + 1)}`;
      return lines('{', '}', Object.keys(value).map(entry), ';', depth);
    }
    if (value instanceof Date) return dateText(value);
    if (value instanceof Uint8Array) return bytesText(value);
    return typeof value === 'symbol' ? value.toString() : String(value);
  }

  // As `%@` shows it.
  prelude.description = value => text(value, 0);
})
