// Classes that are written in JavaScript. Like those of ClassInfo they are described by selector,
// and scripts call each operation by both of its names.
(function (prelude) {
  'use strict';

  const scriptName = selector => selector.replaceAll('_', '__').replaceAll(':', '_');
  const namesOf = selector => {
    const name = scriptName(selector);
    return selector.endsWith(':') ? [name, name.slice(0, -1)] : [name];
  };
  // Of two operations with the same name, the number of arguments selects one.
  const either = (bare, taking) => function (...values) {
    return (values.length === 0 ? bare : taking).apply(this, values);
  };

  // Defines functions that are given by selector under their names in scripts.
  function addOperations(target, operations) {
    for (const selector in operations) {
      const operation = operations[selector];
      for (const name of namesOf(selector)) {
        const bare = operations[name], taking = operations[`${name}:`];
        prelude.addMember(target, name, bare && taking ? either(bare, taking) : operation);
      }
    }
    return target;
  }

  // Where the chain of prototypes of a class or of what its `alloc` returns ends.
  const missing = (describe, names) => new Proxy({}, {
    get(_, name, receiver) {
      if (typeof name === 'symbol' || name === 'then' || name === 'toJSON') return undefined;
      if (name in prelude.rootObject) return prelude.rootObject[name];
      return prelude.readMissing(
          name, () => prelude.missingSelector(describe(receiver), name, names(receiver)));
    },
    has: (_, name) => name in prelude.rootObject,
  });
  const allNames = object => {
    const names = [];
    for (let at = object; at && at !== Object.prototype; at = Object.getPrototypeOf(at)) {
      if (registered.has(at) || described.has(at) || at === classBasics) {
        names.push(...Object.getOwnPropertyNames(at));
      }
    }
    return names;
  };

  // Descriptions by the class's object, and class objects by what `alloc` returns.
  const registered = new Map();
  const described = new Map();
  const byName = new Map();
  const missingOfClass = missing(each => `the class ${registered.get(each)?.name}`, allNames);
  const missingOfAllocated =
      missing(each => `${registered.get(classOfAllocated(each))?.name}.alloc()`, allNames);
  function classOfAllocated(allocated) {
    for (let at = allocated; at; at = Object.getPrototypeOf(at)) {
      if (described.has(at)) return described.get(at);
    }
    return undefined;
  }

  // What every class answers. `this` is the class.
  const of = type => registered.get(type);
  const nameOf = function () { return of(this).name; };
  const classBasics = addOperations(Object.create(missingOfClass), {
    'alloc'() { return Object.create(of(this).allocated); },
    'new'() { return this.alloc().init(); },
    'class'() { return this; },
    'name': nameOf,
    'className': nameOf,
    'description': nameOf,
    'toString': nameOf,
    'superclass'() { return of(this).base ?? globalThis.NSObject; },
    'isSubclassOfClass:'(other) {
      for (let at = this; at; at = of(at)?.base) if (at === other) return true;
      return prelude.nameOfClass(other) === 'NSObject';
    },
    'instancesRespondToSelector:'(selector) {
      return typeof of(this).prototypes?.[0]?.[scriptName(String(selector))] === 'function';
    },
  });

  // Properties are read as methods and may be assigned.
  function defineProperties(prototype, properties) {
    for (const [key, {get, set}] of Object.entries(properties)) {
      const setter = set ?? function () {
        throw prelude.exception('NSInvalidArgumentException',
                                `${prelude.kindOf(this)} has no property ${key} that can be set`);
      };
      Object.defineProperty(prototype, key, {get: () => get, set: setter, configurable: true});
      if (!set) continue;
      addOperations(prototype, {
        [`set${key[0].toUpperCase()}${key.slice(1)}:`](value) { set.call(this, value); },
      });
    }
  }

  // `isInstance` tells the class's values from others; it may be left out where there is an
  // `implementation`, the JavaScript class of the values. `prototypes` receive the operations.
  function defineClass(description) {
    const {implementation} = description;
    if (implementation) {
      description.isInstance ??= value => value instanceof implementation;
      description.prototypes ??= [implementation.prototype];
      description.initializers ??= {'init': () => new implementation()};
    }
    const base = description.base;
    const allocated = addOperations(
        Object.create(base ? registered.get(base).allocated : missingOfAllocated),
        description.initializers ?? {});
    const object =
        addOperations(Object.create(base ?? classBasics), description.classOperations ?? {});
    Object.defineProperty(object, Symbol.hasInstance, {value: description.isInstance});
    description.allocated = allocated;
    registered.set(object, description);
    described.set(allocated, object);
    byName.set(description.name, object);
    for (const prototype of description.prototypes ?? []) {
      if (implementation && !base) closeChain(prototype, description);
      addBasics(prototype);
      addOperations(prototype, description.operations ?? {});
      defineProperties(prototype, description.properties ?? {});
    }
    prelude.addMember(globalThis, description.name, object);
    return object;
  }

  // The engine reads lists and strings fastest while their prototypes are where it put them.
  function addBasics(prototype) {
    if ('isKindOfClass_' in prototype) return;
    const isOrdinary = Object.getPrototypeOf(prototype) === Object.prototype;
    if (isOrdinary && prototype !== Array.prototype && prototype !== String.prototype) {
      Object.setPrototypeOf(prototype, prelude.rootObject);
    } else {
      addOperations(prototype, prelude.rootOperations);
    }
  }

  // Unknown members of a class that is ours altogether are mistakes.
  function closeChain(prototype, description) {
    if (Object.getPrototypeOf(prototype) !== Object.prototype) return;
    Object.setPrototypeOf(prototype, missing(() => `an object of class ${description.name}`,
                                             () => Object.getOwnPropertyNames(prototype)));
    const toString = description.operations?.['description'] ?? (() => `<${description.name}>`);
    prelude.addMember(prototype, 'toString', toString);
  }

  // More operations of a class that another file defines.
  prelude.extendClass = (name, operations) => {
    const description = registered.get(byName.get(name));
    Object.assign(description.operations, operations);
    for (const prototype of description.prototypes) addOperations(prototype, operations);
  };
  prelude.scriptName = scriptName;
  prelude.addOperations = addOperations;
  prelude.defineClass = defineClass;
  // Null for what is not a class in JavaScript.
  prelude.descriptionOf = object => registered.get(object) ?? null;
  // A class in JavaScript, also one that is made when it is first needed.
  prelude.classNamed = name => {
    if (!byName.has(name) && prelude.isLazy(name)) void globalThis[name];
    return byName.get(name) ?? null;
  };
  prelude.nameOfClass = object => registered.get(object)?.name ??
      (prelude.isClass(object) ? object.name() : null);
  // The most derived class that is registered for a value, or null.
  prelude.classOf = value => {
    let found = null;
    for (const [object, {isInstance, isAbstract}] of registered) {
      if (!isAbstract && isInstance(value)) found = object;
    }
    return found;
  };
  // What scripts can use, for the reference.
  prelude.scriptClasses = () => [...registered.values()];
})
