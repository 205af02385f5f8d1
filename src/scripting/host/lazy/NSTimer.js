(function (prelude) {
  'use strict';

  class Timer {
    constructor(interval, repeats, work, info) {
      Object.assign(this, {interval, repeats: Boolean(repeats), work, info: info ?? null});
      Object.assign(this, {id: null, due: Date.now() + interval * 1000, isOver: false});
    }
    start() {
      if (this.id !== null || this.isOver) return this;
      if (this.repeats) {
        this.id = prelude.startTimer(() => this.ring(), this.interval, true);
      } else {
        this.id = prelude.startTimer(() => this.ring(), (this.due - Date.now()) / 1000, false);
      }
      return this;
    }
    stop() {
      if (this.id !== null) prelude.native.stopTimer(this.id);
      this.id = null;
      this.isOver = true;
    }
    ring() {
      if (this.isOver) return;
      this.due = Date.now() + this.interval * 1000;
      try {
        this.work(this);
      } finally {
        if (!this.repeats) this.stop();
      }
    }
  }

  function sending(target, selector, name) {
    prelude.takeObject(target, name);
    const responds = prelude.rootOperations['respondsToSelector:'];
    if (!responds.call(target, selector)) {
      throw prelude.exception('NSInvalidArgumentException',
          `${name}: ${prelude.describeKind(target)} has no selector ${selector}`);
    }
    const method = prelude.scriptName(String(selector));
    const takesTimer = String(selector).endsWith(':');
    return timer => __kelvarSend(target, method, ...takesTimer ? [timer] : []);
  }
  const makers = (prefix, finish) => ({
    [`${prefix}TimeInterval:target:selector:userInfo:repeats:`](
        interval, target, selector, info, repeats) {
      const name = `${prefix}TimeInterval:target:selector:`;
      return finish(new Timer(prelude.takeInterval(interval, name), repeats,
                              sending(target, selector, name), info));
    },
    [`${prefix}TimeInterval:repeats:block:`](interval, repeats, block) {
      const name = `${prefix}TimeInterval:repeats:block:`;
      return finish(new Timer(prelude.takeInterval(interval, name), repeats,
                              prelude.takeFunction(block, name), null));
    },
  });
  const atDate = (timer, date, name) => {
    timer.due = prelude.takeDate(date, name).getTime();
    return timer;
  };

  prelude.addToRunLoop = (timer, selector) => {
    if (timer instanceof Timer) return timer.start();
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes an NSTimer, not ${prelude.describeKind(timer)}`);
  };
  return prelude.defineClass({
    name: 'NSTimer',
    implementation: Timer,
    initializers: {
      'initWithFireDate:interval:target:selector:userInfo:repeats:'(
          date, interval, target, selector, info, repeats) {
        const name = 'initWithFireDate:interval:target:selector:';
        return atDate(new Timer(prelude.takeInterval(interval, name), repeats,
                                sending(target, selector, name), info), date, name);
      },
      'initWithFireDate:interval:repeats:block:'(date, interval, repeats, block) {
        const name = 'initWithFireDate:interval:repeats:block:';
        return atDate(new Timer(prelude.takeInterval(interval, name), repeats,
                                prelude.takeFunction(block, name), null), date, name);
      },
    },
    classOperations: {
      ...makers('scheduledTimerWith', timer => timer.start()),
      ...makers('timerWith', timer => timer),
    },
    operations: {
      'invalidate'() { this.stop(); },
      'isValid'() { return !this.isOver; },
      'fire'() { this.ring(); },
      'timeInterval'() { return this.repeats ? this.interval : 0; },
      'userInfo'() { return this.info; },
      'fireDate'() { return new Date(this.due); },
    },
  });
})
