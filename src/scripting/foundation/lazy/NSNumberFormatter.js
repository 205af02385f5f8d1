(function (prelude) {
  'use strict';

  class NumberFormatter {
    constructor() {
      Object.assign(this, {style: 0, least: null, most: null, leastWhole: 1, grouping: null,
                           before: '', after: ''});
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
        ...this.style === 2 ? {style: 'currency', currency: 'USD'} : {},
        ...this.style === 3 ? {style: 'percent'} : {},
      };
    }
  }
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
    },
    operations: {
      'stringFromNumber:'(number) {
        const value = prelude.takeNumber(number, 'stringFromNumber:');
        return this.before + new Intl.NumberFormat('en-US',
            this.options()).format(value) + this.after;
      },
      'numberFromString:'(text) {
        const plain = prelude.takeString(text, 'numberFromString:').trim().replace(/[,$]/g, '');
        if (!/^[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?%?$/i.test(plain)) return null;
        return plain.endsWith('%') ? Number(plain.slice(0, -1)) / 100 : Number(plain);
      },
    },
  });
})
