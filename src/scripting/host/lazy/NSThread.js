// Scripts run on the main thread.
(function (prelude) {
  'use strict';

  class Thread {
    constructor() { this.values = prelude.newDictionary(); }
  }
  const main = new Thread();
  return prelude.defineClass({
    name: 'NSThread',
    implementation: Thread,
    initializers: {},
    classOperations: {
      'mainThread': () => main,
      'currentThread': () => main,
      'isMainThread': () => true,
      'sleepForTimeInterval:'(interval) {
        prelude.native.sleep(prelude.takeInterval(interval, 'sleepForTimeInterval:'));
      },
    },
    operations: {
      'isMainThread': () => true,
      'threadDictionary'() { return this.values; },
    },
  });
})
