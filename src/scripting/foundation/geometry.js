// The structures that cross the bridge: points, sizes and rectangles; and ranges.
(function (prelude) {
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
  class NSRange {
    constructor(location, length) { this.location = location; this.length = length; }
    toString() { return `{${this.location}, ${this.length}}`; }
  }

  prelude.point = (x, y) => new NSPoint(x, y);
  prelude.size = (width, height) => new NSSize(width, height);
  prelude.rect = (x, y, width, height) => new NSRect(x, y, width, height);
  prelude.range = (location, length) => new NSRange(location, length);
  prelude.structKind = value => value instanceof NSPoint ? 1 : value instanceof NSSize ? 2 :
                                value instanceof NSRect ? 3 : value instanceof NSRange ? 4 : 0;
  prelude.copyStructure = value =>
      value instanceof NSRect
          ? new NSRect(value.origin.x, value.origin.y, value.size.width, value.size.height)
          : new value.constructor(...Object.values(value));
  prelude.structures = [NSPoint, NSSize, NSRect, NSRange];

  // A structure in an object: itself.
  const valueOf = kind => function () {
    if (prelude.structKind(this) === kind) return this;
    throw prelude.exception('NSInvalidArgumentException',
                            `${String(this)} is another kind of structure`);
  };
  const check = (value, kind, selector) => {
    if (prelude.structKind(value) === kind) return prelude.copyStructure(value);
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} does not take ${prelude.describeKind(value)}`);
  };
  prelude.defineClass({
    name: 'NSValue',
    isInstance: value => prelude.structKind(value) > 0 || typeof value === 'number' ||
        typeof value === 'boolean',
    prototypes: prelude.structures.map(each => each.prototype),
    classOperations: {
      'valueWithPoint:': value => check(value, 1, 'valueWithPoint:'),
      'valueWithSize:': value => check(value, 2, 'valueWithSize:'),
      'valueWithRect:': value => check(value, 3, 'valueWithRect:'),
      'valueWithRange:': value => check(value, 4, 'valueWithRange:'),
    },
    operations: {
      'pointValue': valueOf(1),
      'sizeValue': valueOf(2),
      'rectValue': valueOf(3),
      'rangeValue': valueOf(4),
      'description'() { return `NS${this.constructor.name.slice(2)}: ${this}`; },
    },
  });
})
