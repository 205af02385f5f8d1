// The object that stands for nil in lists and dictionaries.
(function (prelude) {
  'use strict';

  class NullObject {
    toJSON() { return null; }
  }
  let shared = null;
  prelude.defineClass({
    name: 'NSNull',
    implementation: NullObject,
    initializers: {'init': () => prelude.nullObject()},
    classOperations: {'null': () => prelude.nullObject()},
    operations: {
      'description': () => '<null>',
      'copy'() { return this; },
      'isEqual:'(other) { return this === other; },
    },
    copy: value => value,
  });
  prelude.nullObject = () => shared ??= new NullObject();
})
