// A string that changes. It has the methods of JavaScript's strings, too.
(function (prelude) {
  'use strict';

  const {takeString, takeRange, takeIndex} = prelude;

  function MutableString(text) {
    Object.defineProperty(this, 'text', {value: text, writable: true});
  }
  MutableString.prototype = Object.create(String.prototype);
  prelude.add(MutableString.prototype, {
    constructor: MutableString,
    toString() { return this.text; },
    valueOf() { return this.text; },
    toJSON() { return this.text; },
    copy() { return this.text; },
  });
  Object.defineProperty(MutableString.prototype, 'length', {get() { return this.text.length; }});

  const isMutable = value => value instanceof MutableString;
  const make = text => new MutableString(text);
  // The makers of strings, whose results may be nil.
  const mutable = makers => Object.fromEntries(Object.entries(makers).map(
      ([selector, maker]) => [selector, (...values) => {
        const made = maker(...values);
        return made === null ? null : make(made);
      }]));

  prelude.defineClass({
    name: 'NSMutableString',
    base: prelude.classNamed('NSString'),
    isInstance: isMutable,
    prototypes: [MutableString.prototype],
    initializers: {
      'init': () => make(''),
      'initWithCapacity:': () => make(''),
      ...mutable(prelude.stringMakers('initWith')),
    },
    classOperations: {
      'string': () => make(''),
      'stringWithCapacity:': () => make(''),
      ...mutable(prelude.stringMakers('stringWith')),
    },
    operations: {
      'appendString:'(other) { this.text += takeString(other, 'appendString:'); },
      'appendFormat:'(format, ...values) {
        this.text += prelude.format(takeString(format, 'appendFormat:'), values);
      },
      'setString:'(other) { this.text = takeString(other, 'setString:'); },
      'insertString:atIndex:'(other, index) {
        const selector = 'insertString:atIndex:';
        const at = takeIndex(index, this.length + 1, selector);
        this.text = this.text.slice(0, at) + takeString(other, selector) + this.text.slice(at);
      },
      'deleteCharactersInRange:'(range) {
        const [from, to] = takeRange(range, this.length, 'deleteCharactersInRange:');
        this.text = this.text.slice(0, from) + this.text.slice(to);
      },
      'replaceCharactersInRange:withString:'(range, other) {
        const selector = 'replaceCharactersInRange:withString:';
        const [from, to] = takeRange(range, this.length, selector);
        this.text = this.text.slice(0, from) + takeString(other, selector) + this.text.slice(to);
      },
      'replaceOccurrencesOfString:withString:options:range:'(sought, replacement, options, range) {
        const selector = 'replaceOccurrencesOfString:withString:options:range:';
        const [from, to] = takeRange(range, this.length, selector);
        const what = takeString(sought, selector);
        const count = what === '' ? 0 : this.text.slice(from, to).split(what).length - 1;
        this.text = prelude.replaceAll(this.text, what, takeString(replacement, selector), options,
                                       range, selector);
        return count;
      },
    },
  });
  prelude.newMutableString = make;
  prelude.isMutableString = isMutable;
})
