// Steps through a list; also in a loop.
(function (prelude) {
  'use strict';

  class Enumerator {
    #take;
    #rest;
    constructor(take, rest) {
      this.#take = take;
      this.#rest = rest;
    }
    take() { return this.#take(); }
    rest() { return this.#rest(); }
    *[Symbol.iterator]() { yield* this.#rest(); }
  }
  prelude.defineClass({
    name: 'NSEnumerator',
    implementation: Enumerator,
    initializers: {},
    operations: {
      'nextObject'() { return this.take(); },
      'allObjects'() { return this.rest(); },
    },
  });
  prelude.newEnumerator = (take, rest) => new Enumerator(take, rest);
})
