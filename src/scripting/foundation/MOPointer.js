// What an operation fills that has more than one result, such as an error.
(function (prelude) {
  'use strict';

  class Pointer {
    #value;
    constructor(value = null) { this.#value = value; }
    get() { return this.#value; }
    set(value) { this.#value = value; }
  }
  prelude.defineClass({
    name: 'MOPointer',
    implementation: Pointer,
    initializers: {
      'init': () => new Pointer(),
      'initWithValue:': value => new Pointer(value),
    },
    classOperations: {
      'pointer': () => new Pointer(),
      'pointerWithValue:': value => new Pointer(value),
    },
    properties: {
      value: {
        get() { return this.get(); },
        set(value) { this.set(value); },
      },
    },
  });
  prelude.newPointer = value => new Pointer(value);
  // Nil ignores the result.
  prelude.store = (pointer, value) => {
    if (pointer instanceof Pointer) pointer.set(value);
    else if (pointer && typeof pointer === 'object') pointer.value = value;
  };
})
