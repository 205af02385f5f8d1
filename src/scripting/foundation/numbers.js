// Numbers and booleans are JavaScript's own.
(function (prelude) {
  'use strict';

  const {takeNumber} = prelude;
  const plain = selector => value => takeNumber(value, selector);
  const whole = selector => value => Math.trunc(takeNumber(value, selector));
  const makers = {};
  for (const [type, make] of Object.entries({
    Int: whole, Integer: whole, UnsignedInt: whole, UnsignedInteger: whole, Long: whole,
    LongLong: whole, UnsignedLong: whole, UnsignedLongLong: whole, Short: whole, Char: whole,
    Float: plain, Double: plain,
  })) {
    makers[type] = make;
  }
  const all = prefix => {
    const found = {};
    for (const [type, make] of Object.entries(makers)) {
      found[`${prefix}${type}:`] = make(`${prefix}${type}:`);
    }
    found[`${prefix}Bool:`] = value => Boolean(prelude.isString(value) ? String(value) : value);
    return found;
  };

  // To a whole number of so many bits, as a conversion in C.
  const integer = (value, bits) => {
    const number = Math.trunc(Number(value));
    if (!Number.isFinite(number)) return 0;
    return bits === 32 ? number | 0 : number;
  };
  const asWhole = bits => function () { return integer(this, bits); };
  const asNumber = function () { return Number(this); };

  prelude.defineClass({
    name: 'NSNumber',
    base: prelude.classNamed('NSValue'),
    isInstance: value => typeof value === 'number' || typeof value === 'boolean' ||
        typeof value === 'bigint',
    prototypes: [Number.prototype, Boolean.prototype, BigInt.prototype],
    initializers: all('initWith'),
    classOperations: all('numberWith'),
    operations: {
      'intValue': asWhole(32),
      'shortValue': asWhole(32),
      'charValue': asWhole(32),
      'integerValue': asWhole(64),
      'longValue': asWhole(64),
      'longLongValue': asWhole(64),
      'unsignedIntValue'() { return integer(this, 64) >>> 0; },
      'unsignedIntegerValue': asWhole(64),
      'unsignedLongValue': asWhole(64),
      'unsignedLongLongValue': asWhole(64),
      'floatValue'() { return Math.fround(Number(this)); },
      'doubleValue': asNumber,
      'boolValue'() { return Boolean(this.valueOf()); },
      'stringValue'() { return prelude.description(this.valueOf()); },
      'descriptionWithLocale:'() { return prelude.description(this.valueOf()); },
      'isEqualToNumber:'(other) { return Number(this) === Number(other); },
      'compare:'(other) {
        return Math.sign(Number(this) - takeNumber(other, 'compare:'));
      },
      'objCType': () => 'd',
    },
  });
})
