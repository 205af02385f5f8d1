// Exceptions with a name and a reason, and what every error answers.
(function (prelude) {
  'use strict';

  // `name` is read both ways: as a method, and as the text that JavaScript's errors have there.
  class Exception extends Error {
    constructor(name, reason, userInfo = null) {
      super(reason);
      const read = () => name;
      read.toString = read.toJSON = read.valueOf = read;
      prelude.add(this, {name: read});
      prelude.add(this, {info: userInfo});
    }
    toString() { return `${this.name()}: ${this.message}`; }
  }

  const textOf = (format, values) => prelude.format(prelude.takeString(format, 'format'), values);
  prelude.defineClass({
    name: 'NSException',
    isInstance: value => value instanceof Error,
    prototypes: [Error.prototype],
    initializers: {
      'initWithName:reason:userInfo:': (name, reason, info) =>
          new Exception(String(name), String(reason ?? ''), info),
    },
    classOperations: {
      'exceptionWithName:reason:userInfo:': (name, reason, info) =>
          new Exception(String(name), String(reason ?? ''), info),
      'raise:format:'(name, format, ...values) {
        throw new Exception(String(name), textOf(format, values));
      },
    },
    operations: {
      'reason'() { return this.message; },
      'userInfo'() { return this.info ?? null; },
      'description'() { return String(this); },
      'raise'() { throw this; },
      'callStackSymbols'() { return String(this.stack ?? '').split('\n'); },
    },
    copy: value => value,
  });
  prelude.exception = (name, reason) => new Exception(name, reason);
})
