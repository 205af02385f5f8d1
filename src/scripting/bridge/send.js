// Messages in brackets. They are more lenient than calls with dots: nil answers nil, properties of
// JavaScript's own are read, and plain objects have the operations of dictionaries.
(function (prelude) {
  'use strict';

  function operationFor(receiver, name) {
    const shorter = name.endsWith('_') ? name.slice(0, -1) : name;
    if (prelude.isDictionary(receiver)) {
      if (typeof receiver[shorter] === 'function') return receiver[shorter];
      if (name in prelude.dictionary) return prelude.dictionary[name];
    }
    if (shorter !== name && typeof receiver[shorter] === 'function') return receiver[shorter];
    return name in prelude.rootObject ? prelude.rootObject[name] : null;
  }

  function sendUncommon(receiver, name, values) {
    const missing = receiver[hasOperations] && prelude.missingMessage(name);
    if (missing) throw new Error(missing);
    const operation = operationFor(receiver, name);
    if (operation) return operation.apply(receiver, values);
    if (values.length === 0 && name in Object(receiver)) return receiver[name];
    throw prelude.missingSelector(prelude.withArticle(prelude.kindOf(receiver)), name,
                                  prelude.namesIn(receiver));
  }

  // All members of the objects that have it are operations.
  const hasOperations = Symbol('hasOperations');

  function send(receiver, name, ...values) {
    if (receiver === null || receiver === undefined) return null;
    // Asking for the type of a native function takes longer than calling it, and so does a call that
    // names the receiver again.
    if (receiver[hasOperations] === true ? receiver[name] !== undefined
                                         : typeof receiver[name] === 'function') {
      return values.length === 0 ? receiver[name]() : receiver[name](...values);
    }
    return sendUncommon(receiver, name, values);
  }

  prelude.markAsNative = prototype => {
    Object.defineProperty(prototype, hasOperations, {value: true});
    prelude.addTargets(prototype);
  };

  // What `value.length()` becomes, since strings have a number of that name.
  function length() {
    const length = this.length;
    return typeof length === 'function' ? length.call(this) : length;
  }

  prelude.add(globalThis, {__kelvarSend: send});
  prelude.add(Object.prototype, {__kelvarLength: length});
})
