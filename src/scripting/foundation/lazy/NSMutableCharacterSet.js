(function (prelude) {
  'use strict';

  const base = prelude.classNamed('NSCharacterSet');
  return prelude.defineClass({
    name: 'NSMutableCharacterSet',
    base,
    isAbstract: true,
    isInstance: value => value instanceof base,
  });
})
