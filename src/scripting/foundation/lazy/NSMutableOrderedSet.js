(function (prelude) {
  'use strict';

  const base = prelude.classNamed('NSOrderedSet');
  return prelude.defineClass({
    name: 'NSMutableOrderedSet',
    base,
    isAbstract: true,
    isInstance: value => value instanceof base,
  });
})
