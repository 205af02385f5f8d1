// Classes that a script makes at run time, above all for delegates.
(function (prelude) {
  'use strict';

  const {takeString} = prelude;

  class Description {
    constructor(name, base) { Object.assign(this, {title: name, base, operations: {}, made: null}); }
    add(selector, body) {
      if (this.made) prelude.extendClass(this.title, {[selector]: body});
      else this.operations[selector] = body;
    }
    register() {
      if (this.made) return this.made;
      const Base = prelude.descriptionOf(this.base)?.implementation;
      this.made = prelude.defineClass({
        name: this.title,
        implementation: Base ? class extends Base {} : class {},
        operations: this.operations,
        ...(Base ? {base: this.base} : {}),
      });
      return this.made;
    }
  }
  const allocate = (name, base) => {
    const text = takeString(name, 'allocateDescriptionForClassWithName:superclass:');
    if (prelude.classNamed(text) || prelude.isClass(globalThis[text])) return null;
    const isOurs = prelude.isClass(base) &&
        (prelude.nameOfClass(base) === 'NSObject' || prelude.descriptionOf(base)?.implementation);
    if (isOurs) return new Description(text, base);
    throw prelude.exception(
        'NSInvalidArgumentException',
        `the superclass of ${text} is NSObject or a class that a script made, not ` +
            prelude.describeKind(base));
  };
  return prelude.defineClass({
    name: 'MOClassDescription',
    implementation: Description,
    initializers: {},
    classOperations: {'allocateDescriptionForClassWithName:superclass:': allocate},
    operations: {
      'name'() { return this.title; },
      'addInstanceMethodWithSelector:function:'(selector, body) {
        const name = 'addInstanceMethodWithSelector:function:';
        this.add(takeString(selector, name), prelude.takeFunction(body, name));
        return true;
      },
      'registerClass'() { return this.register(); },
    },
  });
})
