// What the bridge needs that is shorter in the script's own language.
(function () {
  'use strict';

  class NSPoint {
    constructor(x, y) { this.x = x; this.y = y; }
    toString() { return `{${this.x}, ${this.y}}`; }
  }
  class NSSize {
    constructor(width, height) { this.width = width; this.height = height; }
    toString() { return `{${this.width}, ${this.height}}`; }
  }
  class NSRect {
    constructor(x, y, width, height) {
      this.origin = new NSPoint(x, y);
      this.size = new NSSize(width, height);
    }
    toString() { return `{${this.origin}, ${this.size}}`; }
  }

  const forLists = {
    count() { return this.length; },
    firstObject() { return this.length > 0 ? this[0] : null; },
    lastObject() { return this.length > 0 ? this[this.length - 1] : null; },
    objectEnumerator() {
      let next = 0;
      return {nextObject: () => next < this.length ? this[next++] : null};
    },
    objectAtIndex_(index) {
      if (index in this) return this[index];
      throw new RangeError(`the list has no object at ${index}, only ${this.length} in all`);
    },
  };
  forLists.objectAtIndex = forLists.objectAtIndex_;
  const forDictionaries = {
    objectForKey_(key) { return Object.hasOwn(this, key) ? this[key] : null; },
    allKeys() { return Object.keys(this); },
  };
  for (const name of ['objectForKey', 'valueForKey', 'valueForKey_']) {
    forDictionaries[name] = forDictionaries.objectForKey_;
  }
  // None of them turns up where a script goes through what a list or dictionary holds.
  const add = (target, functions) => {
    for (const [name, value] of Object.entries(functions)) {
      Object.defineProperty(target, name, {value, writable: true, configurable: true});
    }
    return target;
  };
  add(Array.prototype, forLists);
  const dictionary = add({}, forDictionaries);

  const isDictionary = value => typeof value === 'object' && value !== null &&
      [Object.prototype, dictionary, null].includes(Object.getPrototypeOf(value)) &&
      !Object.hasOwn(value, 'toString');
  const isPlain = value => isDictionary(value) || Array.isArray(value);
  const inside = (key, value) =>
      typeof value === 'bigint' || typeof value === 'object' && value !== null && !isPlain(value)
          ? String(value) : value;

  // Sends what it is asked to every element of the list that understands it.
  const scriptName = selector => selector.replaceAll('_', '__').replaceAll(':', '_');
  const understands = (element, name) =>
      element !== null && element !== undefined && name in Object(element) &&
      typeof element[name] === 'function';
  function each(list) {
    const own = {
      array: () => list,
      setArray_(array) { list = array; },
      respondsToSelector_(selector) {
        const name = scriptName(String(selector));
        return name in own || list.some(element => understands(element, name));
      },
      isKindOfClass_: () => false,
      className: () => 'Each',
      description: () => '<Each>',
      toString: () => '<Each>',
    };
    for (const name of ['setArray', 'respondsToSelector', 'isKindOfClass']) {
      own[name] = own[name + '_'];
    }
    return new Proxy(own, {
      get(_, name) {
        if (name in own || typeof name === 'symbol') return own[name];
        if (list.some(element => understands(element, name))) {
          return (...values) => {
            for (const element of [...list]) {
              if (understands(element, name)) element[name](...values);
            }
          };
        }
        if (name === 'then' || name === 'toJSON') return undefined;
        throw new Error(`no element of the list has a selector ${name}`);
      },
      set(_, name, value) {
        if (name !== 'array') throw new Error(`Each has no property ${name} that can be set`);
        list = value;
        return true;
      },
    });
  }

  const held = new WeakMap();

  return {
    point: (x, y) => new NSPoint(x, y),
    size: (width, height) => new NSSize(width, height),
    dictionary,
    rect: (x, y, width, height) => new NSRect(x, y, width, height),
    structKind: value => value instanceof NSPoint ? 1 : value instanceof NSSize ? 2 :
                         value instanceof NSRect ? 3 : 0,

    // `object.name` is the operation, which `object.name()` calls; `object.name = value` sets.
    define(target, name, operation, set) {
      Object.defineProperty(target, name, {get: () => operation, set, configurable: true});
    },
    accessor(target, name, get, set) {
      Object.defineProperty(target, name, {get, set, configurable: true});
    },
    // Stands at the end of a chain of prototypes: only what nobody has gets here.
    terminal: (get, set) => new Proxy({}, {get, set, has: () => false}),
    isKnown: name => name in Object.prototype || name === 'then' || name === 'toJSON',
    known: name => Object.prototype[name],

    extendValues(digest, base64, shuffle) {
      add(String.prototype, {
        MD5String() { return digest(String(this)); },
        base64String() { return base64(String(this)); },
      });
      add(Uint8Array.prototype, {base64String() { return base64(this); }});
      add(Array.prototype, {
        each() { return each(this); },
        shuffle() { return shuffle(this); },
      });
    },

    // Dictionaries show what they hold, and so do lists of them and empty ones.
    describe(value) {
      if (isDictionary(value) ||
          Array.isArray(value) && (value.length === 0 || value.some(isPlain))) {
        try {
          return JSON.stringify(value, inside);
        } catch {
          // One that holds itself.
        }
      }
      return String(value);
    },

    // The owner keeps the value under this name as long as it lives.
    hold(owner, name, value) {
      const values = held.get(owner) ?? {};
      values[name] = value;
      held.set(owner, values);
    },
  };
})()
