// The script that is running, as the host's bridge shows it to itself.
(function (prelude) {
  'use strict';

  class Interval {
    constructor(id) { this.id = id; }
  }
  prelude.defineClass({
    name: 'COSInterval',
    implementation: Interval,
    initializers: {},
    operations: {'cancel'() { prelude.native.stopTimer(this.id); }},
  });

  class Fiber {
    constructor() { this.cleanups = []; }
  }
  prelude.defineClass({
    name: 'COSFiber',
    implementation: Fiber,
    initializers: {},
    operations: {
      'onCleanup:'(work) { this.cleanups.push(prelude.takeFunction(work, 'onCleanup:')); },
      'cleanup'() {
        for (const work of this.cleanups.splice(0)) work();
      },
    },
  });

  function schedule(interval, work, repeats, selector) {
    const seconds = prelude.takeInterval(interval, selector);
    prelude.takeFunction(work, selector);
    const scheduled = new Interval(0);
    scheduled.id = prelude.startTimer(() => work(scheduled), seconds, repeats);
    return scheduled;
  }

  const shouldKeepAround = {
    get() { return this.keeps; },
    set(keeps) {
      this.keeps = Boolean(keeps);
      prelude.native.keepAround(this.keeps);
    },
  };
  class Script {
    constructor() { this.keeps = false; }
  }
  const current = new Script();
  return prelude.defineClass({
    name: 'COScript',
    implementation: Script,
    initializers: {},
    classOperations: {'currentCOScript': () => current},
    properties: {shouldKeepAround, shouldKeepRunning: shouldKeepAround},
    operations: {
      'scheduleWithInterval:jsFunction:': (interval, work) =>
          schedule(interval, work, false, 'scheduleWithInterval:jsFunction:'),
      'scheduleWithRepeatingInterval:jsFunction:': (interval, work) =>
          schedule(interval, work, true, 'scheduleWithRepeatingInterval:jsFunction:'),
      'createFiber': () => new Fiber(),
      'env'() {
        const env = prelude.newDictionary();
        env.scriptURL = globalThis.context?.scriptURL ?? null;
        return env;
      },
    },
  });
})
