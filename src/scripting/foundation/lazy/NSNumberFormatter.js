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
      const least = this.least ?? (this.style === 2 ? 2 : 0);
      return {
        minimumIntegerDigits: Math.max(1, this.leastWhole), minimumFractionDigits: least,
        maximumFractionDigits: Math.max(least, most),
        useGrouping: this.grouping ?? (this.style === 1 || this.style === 2),
        roundingMode: 'halfEven',
        ...this.style === 2 ? {style: 'currency', currency: this.code} : {},
        ...this.style === 3 ? {style: 'percent'} : {},
      };
    }
  }
  // As many as can be written before or after the decimal sign.
  const mostDigits = 20;
  const digitCount = value => {
    const count = Math.trunc(prelude.takeNumber(value, 'a number of digits'));
    return Math.min(Math.max(count || 0, 0), mostDigits);
  };
  // "#,##0.00" says which digits are there, and what stands around them.
  function readPattern(text) {
    const positive = prelude.takeString(text, 'setPositiveFormat:').split(';')[0];
    const [, before, digits, after] = /^([^#0,.]*)([#0,.]*)(.*)$/.exec(positive);
    const [whole, fraction = ''] = digits.split('.');
    return {
      before, after,
      options: {
        minimumIntegerDigits: Math.max(1, digitCount(whole.replace(/[^0]/g, '').length)),
        minimumFractionDigits: digitCount(fraction.replace(/[^0]/g, '').length),
        maximumFractionDigits: digitCount(fraction.length),
        useGrouping: whole.includes(','),
        roundingMode: 'halfEven',
      },
    };
  }
  const tagOf = place => place.localeIdentifier().replaceAll('_', '-').replace(/-POSIX$/, '');
  const localeOf = ({place}) => place ? tagOf(place) : 'en-US';
  function takeLocale(value) {
    if (prelude.isNull(value)) return null;
    prelude.classNamed('NSLocale');
    const invalid = message => prelude.exception('NSInvalidArgumentException', message);
    if (!prelude.isLocale(value)) {
      throw invalid(`locale takes an NSLocale, not ${prelude.describeKind(value)}`);
    }
    try {
      Intl.getCanonicalLocales(tagOf(value));
    } catch {
      throw invalid(`there is no locale "${value.localeIdentifier()}"`);
    }
    return value;
  }
  // What stands in written numbers beside digits.
  function signsOf(formatter) {
    const options = {style: 'currency', currency: formatter.code, useGrouping: true,
                     minimumFractionDigits: 1};
    const parts = new Intl.NumberFormat(localeOf(formatter), options).formatToParts(1234567.5);
    const sign = type => parts.find(each => each.type === type)?.value ?? '';
    return {group: formatter.separator ?? sign('group'), decimal: formatter.point ?? sign('decimal'),
            currency: formatter.symbol ?? sign('currency')};
  }
  // Null for what is no number.
  function read(formatter, text) {
    const {group, decimal, currency} = signsOf(formatter);
    let plain = currency ? text.replaceAll(currency, '') : text;
    if (group && group !== decimal) plain = plain.replaceAll(/^\s+$/.test(group) ? /\s/g : group, '');
    plain = plain.trim().replace(/\s+%$/, '%').replace(/^([-+])\s+/, '$1');
    // Any other point would become a decimal sign.
    if (decimal) plain = plain.split(decimal).map(each => each.replaceAll('.', '?')).join('.');
    if (!/^[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?%?$/i.test(plain)) return null;
    return plain.endsWith('%') ? Number(plain.slice(0, -1)) / 100 : Number(plain);
  }
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
      minimumFractionDigits: slot('least', digitCount),
      maximumFractionDigits: slot('most', digitCount),
      minimumIntegerDigits: slot('leastWhole', digitCount),
      usesGroupingSeparator: slot('grouping', Boolean),
      positivePrefix: slot('before', String),
      positiveSuffix: slot('after', String),
      negativePrefix: slot('negative', String),
      groupingSeparator: slot('separator', String),
      decimalSeparator: slot('point', String),
      currencySymbol: slot('symbol', String),
      currencyCode: slot('code', String),
      locale: slot('place', takeLocale),
      format: patternSlot,
      positiveFormat: patternSlot,
    },
    operations: {
      'stringFromNumber:'(number) {
        return write(this, prelude.takeNumber(number, 'stringFromNumber:'));
      },
      'numberFromString:'(text) {
        return read(this, prelude.takeString(text, 'numberFromString:'));
      },
    },
  });
})
