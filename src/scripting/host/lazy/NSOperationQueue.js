// Work for the main thread, one after the other. Others would not be parallel, so there are none.
(function (prelude) {
  'use strict';

  class Queue {}
  const main = new Queue();
  return prelude.defineClass({
    name: 'NSOperationQueue',
    implementation: Queue,
    initializers: {},
    classOperations: {'mainQueue': () => main, 'currentQueue': () => main},
    operations: {
      'addOperationWithBlock:'(work) {
        prelude.takeFunction(work, 'addOperationWithBlock:');
        prelude.startTimer(() => work(), 0, false);
      },
    },
  });
})
