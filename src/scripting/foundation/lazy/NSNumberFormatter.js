(function (prelude) {
  'use strict';

  class NumberFormatter {
    constructor() {
      Object.assign(this, {style: 0, least: null, most: null, leastWhole: 1, grouping: null,
                           before: '', after: '', negative: '-', separator: null, point: null,
                           symbol: null, code: 'USD', pattern: null, place: null});
    }
    options() {
      const hasFraction = this.style !== 0;
      const most = this.most ?? (this.style === 2 ? 2 : hasFraction && this.style !== 3 ? 3 : 0);
      const least = Math.min(this.least ?? (this.style === 2 ? 2 : 0), 20);
      return {
        minimumIntegerDigits: Math.max(1, this.leastWhole), minimumFractionDigits: least,
        maximumFractionDigits: Math.min(Math.max(least, most), 20),
        useGrouping: this.grouping ?? (this.style === 1 || this.style === 2),
        roundingMode: 'halfEven',
        ...this.style === 2 ? {style: 'currency', currency: this.code} : {},
        ...this.style === 3 ? {style: 'percent'} : {},
      };
    }
  }
  // "#,##0.00" says which digits are there, and what stands around them.
  function readPattern(text) {
    const positive = prelude.takeString(text, 'setPositiveFormat:').split(';')[0];
    const [, before, digits, after] = /^([^#0,.]*)([#0,.]*)(.*)$/.exec(positive);
    const [whole, fraction = ''] = digits.split('.');
    return {
      before, after,
      options: {
        minimumIntegerDigits: Math.max(1, whole.replace(/[^0]/g, '').length),
        minimumFractionDigits: fraction.replace(/[^0]/g, '').length,
        maximumFractionDigits: fraction.length,
        useGrouping: whole.includes(','),
        roundingMode: 'halfEven',
      },
    };
  }
  const localeOf = ({place}) =>
      place ? place.localeIdentifier().replaceAll('_', '-').replace(/-POSIX$/, '') : 'en-US';
  function write(formatter, value) {
    const {pattern} = formatter;
    const options = pattern ? pattern.options : formatter.options();
    const scaled = pattern?.after.includes('%') ? value * 100 : value;
    const instead = {
      group: formatter.separator, decimal: formatter.point, currency: formatter.symbol,
    };
    const text = new Intl.NumberFormat(localeOf(formatter), options)
        .formatToParts(Math.abs(scaled)).map(each => instead[each.type] ?? each.value).join('');
    const isNegative = value < 0 && /[1-9]/.test(text);
    const around = pattern ? [pattern.before, pattern.after] : ['', ''];
    return (isNegative ? formatter.negative : formatter.before) + around[0] + text + around[1] +
        (isNegative ? '' : formatter.after);
  }
  const patternSlot = {
    get() { return this.pattern?.text ?? ''; },
    set(text) { this.pattern = text ? {...readPattern(text), text: String(text)} : null; },
  };
  const slot = (name, convert = Number) => ({
    get() { return this[name]; },
    set(value) { this[name] = convert(value); },
  });
  return prelude.defineClass({
    name: 'NSNumberFormatter',
    implementation: NumberFormatter,
    properties: {
      numberStyle: slot('style'),
      minimumFractionDigits: slot('least'),
      maximumFractionDigits: slot('most'),
      minimumIntegerDigits: slot('leastWhole'),
      usesGroupingSeparator: slot('grouping', Boolean),
      positivePrefix: slot('before', String),
      positiveSuffix: slot('after', String),
      negativePrefix: slot('negative', String),
      groupingSeparator: slot('separator', String),
      decimalSeparator: slot('point', String),
      currencySymbol: slot('symbol', String),
      currencyCode: slot('code', String),
      locale: slot('place', value => value ?? null),
      format: patternSlot,
      positiveFormat: patternSlot,
    },
    operations: {
      'stringFromNumber:'(number) {
        return write(this, prelude.takeNumber(number, 'stringFromNumber:'));
      },
      'numberFromString:'(text) {
        const {separator, point, symbol} = this;
        let plain = prelude.takeString(text, 'numberFromString:').trim();
        for (const each of [separator ?? ',', symbol ?? '$']) plain = plain.replaceAll(each, '');
        if (point) plain = plain.replaceAll(point, '.');
        if (!/^[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?%?$/i.test(plain)) return null;
        return plain.endsWith('%') ? Number(plain.slice(0, -1)) / 100 : Number(plain);
      },
    },
  });
})
