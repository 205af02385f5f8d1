// How the lines of a text are laid out.
(function (prelude) {
  'use strict';

  const defaults = {
    alignment: 4, lineSpacing: 0, paragraphSpacing: 0, paragraphSpacingBefore: 0,
    minimumLineHeight: 0, maximumLineHeight: 0, lineHeightMultiple: 0, firstLineHeadIndent: 0,
    headIndent: 0, tailIndent: 0, lineBreakMode: 0,
  };
  class ParagraphStyle {
    constructor(values = {}) { this.values = {...defaults, ...values}; }
  }
  class MutableParagraphStyle extends ParagraphStyle {}

  const properties = isMutable => Object.fromEntries(Object.keys(defaults).map(name => [name, {
    get() { return this.values[name]; },
    ...isMutable ? {set(value) { this.values[name] = prelude.takeNumber(value, name); }} : {},
  }]));
  const shared = {
    equals: (a, b) => Object.keys(defaults).every(name => a.values[name] === b.values[name]),
    copy: value => new ParagraphStyle(value.values),
    plain: ({values}) => ({...values}),
  };
  prelude.newParagraphStyle = values => new ParagraphStyle(values);
  const base = prelude.defineClass({
    name: 'NSParagraphStyle',
    implementation: ParagraphStyle,
    classOperations: {'defaultParagraphStyle': () => new ParagraphStyle()},
    operations: {
      'mutableCopy'() { return new MutableParagraphStyle(this.values); },
      'description'() { return `Alignment ${this.values.alignment}`; },
    },
    properties: properties(false),
    ...shared,
  });
  prelude.defineClass({
    name: 'NSMutableParagraphStyle',
    base,
    implementation: MutableParagraphStyle,
    initializers: {'init': () => new MutableParagraphStyle()},
    operations: {
      'setParagraphStyle:'(other) { this.values = {...other.values}; },
    },
    properties: properties(true),
    ...shared,
  });
  return base;
})
