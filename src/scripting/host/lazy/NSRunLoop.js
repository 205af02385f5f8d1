// The loop that runs when the script has returned.
(function (prelude) {
  'use strict';

  class RunLoop {}
  const shared = new RunLoop();
  const current = () => shared;
  return prelude.defineClass({
    name: 'NSRunLoop',
    implementation: RunLoop,
    initializers: {},
    classOperations: {'currentRunLoop': current, 'mainRunLoop': current},
    operations: {
      'addTimer:forMode:'(timer) {
        prelude.classNamed('NSTimer');
        prelude.addToRunLoop(timer, 'addTimer:forMode:');
      },
    },
  });
})
