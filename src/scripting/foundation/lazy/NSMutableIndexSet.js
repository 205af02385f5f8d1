(function (prelude) {
  'use strict';

  const base = prelude.classNamed('NSIndexSet');
  return prelude.defineClass({
    name: 'NSMutableIndexSet',
    base,
    isAbstract: true,
    isInstance: value => value instanceof base,
  });
})
