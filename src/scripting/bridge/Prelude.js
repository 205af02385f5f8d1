// The parts of the bridge that are shorter in JavaScript. Every other file here and in the folders
// foundation and host is a function of this object, called in the order of the files' names, first
// those here. What one file in these folders needs of another it looks up when it is used.
(function () {
  'use strict';

  const member = {value: undefined, writable: true, configurable: true};
  const prelude = {
    // Not enumerable, so that loops over lists and dictionaries do not see them.
    add(target, functions) {
      for (const name in functions) prelude.addMember(target, name, functions[name]);
      return target;
    },
    addMember(target, name, value) {
      member.value = value;
      Object.defineProperty(target, name, member);
    },

    // `object.name` is the operation, which `object.name()` calls; `object.name = value` sets.
    define(target, name, operation, set) {
      Object.defineProperty(target, name, {get: () => operation, set, configurable: true});
    },
    // The same for objects whose class sets: reading a plain value runs no function.
    defineOperation(target, name, value) {
      Object.defineProperty(target, name, {value, configurable: true});
    },
    accessor(target, name, get, set) {
      Object.defineProperty(target, name, {get, set, configurable: true});
    },
    // A global that a file in a folder lazy makes when it is first read; the file is a function
    // of the prelude that returns it.
    defineLazily(name, load) {
      lazy.add(name);
      const place = value => Object.defineProperty(globalThis, name, {
        value, writable: true, configurable: true,
      });
      Object.defineProperty(globalThis, name, {
        get() {
          const value = load()(prelude);
          place(value);
          return value;
        },
        set: place,
        configurable: true,
      });
    },
    isLazy: name => lazy.has(name),
    lazyNames: () => [...lazy],
    // Ends a chain of prototypes, so that only unknown members reach it.
    missingMemberProxy: (get, set) => new Proxy({}, {get, set, has: () => false}),
    // Promises and JSON look for the last two.
    isObjectPrototypeMember: name =>
        name in prelude.rootObject || name === 'then' || name === 'toJSON',
    objectPrototypeMember: name => prelude.rootObject[name],

    extendValues(digest, base64, shuffle) {
      prelude.add(String.prototype, {
        MD5String() { return digest(String(this)); },
        base64String() { return base64(String(this)); },
      });
      prelude.add(Uint8Array.prototype, {base64String() { return base64(this); }});
      prelude.add(Array.prototype, {
        each() { return prelude.each(this); },
        shuffle() { return shuffle(this); },
      });
    },

    setNative(native) { prelude.native = native; },

    // Keeps the value alive for as long as its owner, or until another one has this name.
    retain(owner, name, value) {
      const values = retained.get(owner) ?? {};
      values[name] = value;
      retained.set(owner, values);
    },
  };
  const lazy = new Set();
  const retained = new WeakMap();
  return prelude;
})()
