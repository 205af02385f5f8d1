// What went wrong, for scripts that ask; unlike an exception it is not thrown.
(function (prelude) {
  'use strict';

  class ErrorObject {
    #domain; #code; #info;
    constructor(domain, code, info) {
      this.#domain = String(domain);
      this.#code = Number(code);
      this.#info = Object.assign(prelude.newDictionary(), info);
    }
    domain() { return this.#domain; }
    code() { return this.#code; }
    info() { return this.#info; }
    message() {
      return this.#info.NSLocalizedDescription ??
          `The operation couldn’t be completed. (${this.#domain} error ${this.#code}.)`;
    }
  }
  const make = (domain, code, info) =>
      new ErrorObject(prelude.takeString(domain, 'errorWithDomain:code:userInfo:'), code,
          info ?? {});
  prelude.defineClass({
    name: 'NSError',
    implementation: ErrorObject,
    initializers: {'initWithDomain:code:userInfo:': make},
    classOperations: {'errorWithDomain:code:userInfo:': make},
    operations: {
      'domain': ErrorObject.prototype.domain,
      'code': ErrorObject.prototype.code,
      'userInfo'() { return this.info(); },
      'localizedDescription'() { return String(this.message()); },
      'localizedFailureReason'() { return this.info().NSLocalizedFailureReason ?? null; },
      'localizedRecoverySuggestion'() { return this.info().NSLocalizedRecoverySuggestion ?? null; },
      'description'() {
        return `Error Domain=${this.domain()} Code=${this.code()} "${this.message()}"`;
      },
    },
    copy: value => value,
  });
  prelude.newError = (domain, code, info) => new ErrorObject(domain, code, info);
})
