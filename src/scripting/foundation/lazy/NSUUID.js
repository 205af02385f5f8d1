(function (prelude) {
  'use strict';

  class Identifier {
    #text;
    constructor(text) { this.#text = text; }
    text() { return this.#text; }
  }
  const make = () => new Identifier(prelude.native.newIdentifier().toUpperCase());
  const fromText = text => {
    const whole = prelude.takeString(text, 'initWithUUIDString:');
    return /^[\da-f]{8}(-[\da-f]{4}){3}-[\da-f]{12}$/i.test(whole)
        ? new Identifier(whole.toUpperCase()) : null;
  };
  return prelude.defineClass({
    name: 'NSUUID',
    implementation: Identifier,
    initializers: {'init': make, 'initWithUUIDString:': fromText},
    classOperations: {'UUID': make},
    operations: {
      'UUIDString'() { return this.text(); },
      'description'() { return this.text(); },
    },
    equals: (a, b) => a.text() === b.text(),
    copy: value => value,
  });
})
