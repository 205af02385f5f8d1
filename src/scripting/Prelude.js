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
    objectAtIndex_(index) {
      if (index in this) return this[index];
      throw new RangeError(`the list has no object at ${index}, only ${this.length} in all`);
    },
  };
  forLists.objectAtIndex = forLists.objectAtIndex_;
  for (const [name, value] of Object.entries(forLists)) {
    Object.defineProperty(Array.prototype, name, {value, writable: true, configurable: true});
  }

  const held = new WeakMap();

  return {
    point: (x, y) => new NSPoint(x, y),
    size: (width, height) => new NSSize(width, height),
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

    // The owner keeps the value under this name as long as it lives.
    hold(owner, name, value) {
      const values = held.get(owner) ?? {};
      values[name] = value;
      held.set(owner, values);
    },
  };
})()
