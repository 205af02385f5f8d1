// Functions that run work later. Scripts may replace `setTimeout`, which nothing here uses.
(function (prelude) {
  'use strict';

  // After some seconds, as far as that can be.
  prelude.startTimer = (work, seconds, repeats) =>
      prelude.native.startTimer(work, Math.max(seconds * 1000, repeats ? 1 : 0), repeats);
  prelude.takeInterval = (interval, selector) => {
    const seconds = prelude.takeNumber(interval, selector);
    if (Number.isFinite(seconds)) return Math.max(seconds, 0);
    throw prelude.exception('NSInvalidArgumentException',
                            `${selector} takes a number of seconds, not ${seconds}`);
  };

  prelude.defineFunctions({
    setImmediate(work, ...values) {
      prelude.takeFunction(work, 'setImmediate');
      return prelude.startTimer(() => work(...values), 0, false);
    },
    clearImmediate: id => prelude.native.stopTimer(id),
    queueMicrotask(work) {
      prelude.takeFunction(work, 'queueMicrotask');
      Promise.resolve().then(() => { work(); });
    },
  });
})
