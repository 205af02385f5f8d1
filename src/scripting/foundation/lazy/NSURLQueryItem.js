(function (prelude) {
  'use strict';

  class QueryItem {
    constructor(name, value) { Object.assign(this, {key: name, text: value}); }
  }
  const make = selector => (name, value) => new QueryItem(
      prelude.takeString(name, selector),
      prelude.isNull(value) ? null : prelude.takeString(value, selector));
  prelude.isQueryItem = value => value instanceof QueryItem;
  return prelude.defineClass({
    name: 'NSURLQueryItem',
    implementation: QueryItem,
    initializers: {'initWithName:value:': make('initWithName:value:')},
    classOperations: {'queryItemWithName:value:': make('queryItemWithName:value:')},
    operations: {
      'name'() { return this.key; },
      'value'() { return this.text; },
      'description'() { return `${this.key}=${this.text ?? ''}`; },
    },
    equals: (a, b) => a.key === b.key && a.text === b.text,
    copy: value => value,
  });
})
