// `log` and its relatives print like the global function; warnings, errors, failed assertions and
// traces go to standard error, in one line each.
(function (prelude) {
  'use strict';

  const {native} = prelude;
  const text = value => typeof value === 'symbol' ? value.toString() : prelude.describe(value);
  const number = convert => value =>
      ['object', 'symbol', 'function'].includes(typeof value) && !prelude.isString(value)
          ? 'NaN' : String(convert(typeof value === 'bigint' ? Number(value) : value));
  const contents = value => Array.isArray(value) ? JSON.stringify(value) : text(value);
  const inspect = value => {
    try {
      return contents(value);
    } catch {
      return text(value);  // It contains itself.
    }
  };
  const directives = {
    s: text, d: number(Number), i: number(value => parseInt(value, 10)), f: number(parseFloat),
    o: inspect, O: inspect, j: inspect, c: () => '',
  };
  function join(values) {
    const [first, ...rest] = values;
    if (rest.length === 0 || !prelude.isString(first)) return values.map(text).join(' ');
    const format = String(first).replace(/%([sdifoOjc%])/g, (found, kind) =>
        kind === '%' ? '%' : rest.length === 0 ? found : directives[kind](rest.shift()));
    return [format, ...rest.map(text)].join(' ');
  }

  let depth = 0;
  const indent = line => '  '.repeat(depth) + line;
  const print = (...values) => {
    for (const line of depth > 0 ? join(values).split('\n') : [join(values)]) {
      native.print(indent(line));
    }
  };
  const warn = (...values) => native.warn(indent(join(values).replace(/\s*\n\s*/g, ' ')));

  // The frames of scripts; ours have no file.
  const callers = () => (new Error().stack ?? '').split('\n')
      .map(line => /^(.*)@(.+):(\d+):\d+$/.exec(line))
      .filter(Boolean)
      .map(([, name, file, line]) => ` at ${name ? `${name} ` : ''}(${file}:${line})`).join('');

  const counts = new Map(), starts = new Map();
  const named = (label = 'default') => String(label);
  function elapsed(label) {
    const name = named(label);
    if (starts.has(name)) return `${name}: ${Date.now() - starts.get(name)} ms`;
    warn(`there is no timer "${name}"`);
    return null;
  }

  function table(rows) {
    if (typeof rows !== 'object' || rows === null) return print(rows);
    const cells = row => typeof row === 'object' && row !== null && !prelude.isString(row)
        ? Object.entries(row) : [['value', row]];
    const all = Object.entries(rows).map(([index, row]) => ({index, cells: new Map(cells(row))}));
    const columns = [...new Set(all.flatMap(({cells: found}) => [...found.keys()]))];
    const lines = [['(index)', ...columns], ...all.map(({index, cells: found}) =>
        [index, ...columns.map(name => found.has(name) ? text(found.get(name)) : '')])];
    const widths = lines[0].map((_, i) => Math.max(...lines.map(line => line[i].length)));
    for (const line of lines) {
      print(line.map((cell, i) => cell.padEnd(widths[i])).join('  ').trimEnd());
    }
  }

  const group = (...values) => {
    if (values.length > 0) print(...values);
    ++depth;
  };
  return {
    log: print, info: print, debug: print, dirxml: print,
    warn, error: warn, exception: warn,
    dir(value) { print(inspect(value)); },
    assert(isTrue, ...values) {
      if (!isTrue) warn(`Assertion failed${values.length > 0 ? `: ${join(values)}` : ''}`);
    },
    trace(...values) {
      warn(`Trace${values.length > 0 ? `: ${join(values)}` : ''}${callers()}`);
    },
    count(label) {
      const name = named(label);
      counts.set(name, (counts.get(name) ?? 0) + 1);
      print(`${name}: ${counts.get(name)}`);
    },
    countReset(label) { counts.delete(named(label)); },
    time(label) { starts.set(named(label), Date.now()); },
    timeLog(label, ...values) {
      const line = elapsed(label);
      if (line) print([line, ...values.map(text)].join(' '));
    },
    timeEnd(label) {
      const line = elapsed(label);
      if (line) print(line);
      starts.delete(named(label));
    },
    table, group, groupCollapsed: group,
    groupEnd() { depth = Math.max(depth - 1, 0); },
    clear() {},
  };
})
