(function (prelude) {
  'use strict';

  prelude.classNamed('MSApplicationMetadata');
  class SketchInfo {}
  const shared = new SketchInfo();
  return prelude.defineClass({
    name: 'BCSketchInfo',
    implementation: SketchInfo,
    initializers: {},
    classOperations: {'shared': () => shared},
    operations: {'metadata': () => prelude.applicationMetadata()},
  });
})
