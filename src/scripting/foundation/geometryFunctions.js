// The functions of points, sizes, rectangles and ranges, each under both of its families' names.
(function (prelude) {
  'use strict';

  const {point, size, rect, range} = prelude;
  const read = (value, name, fields) => {
    const found = fields.map(path => {
      const [outer, inner] = path.split('.');
      const number = inner ? value?.[outer]?.[inner] ?? value?.[inner] : value?.[outer];
      if (typeof number === 'number') return number;
      throw prelude.exception('NSInvalidArgumentException',
          `${name} takes ${prelude.withArticle(fields.kind)}, not ${prelude.describeKind(value)}`);
    });
    return found;
  };
  const fieldsOf = (kind, ...fields) => Object.assign(fields, {kind});
  const pointFields = fieldsOf('point', 'x', 'y');
  const sizeFields = fieldsOf('size', 'width', 'height');
  const rangeFields = fieldsOf('range', 'location', 'length');
  const rectFields =
      fieldsOf('rectangle', 'origin.x', 'origin.y', 'size.width', 'size.height');

  const nullRect = () => rect(Infinity, Infinity, 0, 0);
  const isNull = ([x, y]) => x === Infinity || y === Infinity;
  // Left, top, right and bottom, whatever the signs of the width and the height.
  const edges = ([x, y, width, height]) =>
      [Math.min(x, x + width), Math.min(y, y + height), Math.max(x, x + width),
       Math.max(y, y + height)];
  const between = (left, top, right, bottom) => rect(left, top, right - left, bottom - top);
  const isEmpty = parts => isNull(parts) || parts[2] === 0 || parts[3] === 0;

  const ofRect = {
    MinX: parts => edges(parts)[0],
    MinY: parts => edges(parts)[1],
    MaxX: parts => edges(parts)[2],
    MaxY: parts => edges(parts)[3],
    MidX: parts => parts[0] + parts[2] / 2,
    MidY: parts => parts[1] + parts[3] / 2,
    Width: parts => Math.abs(parts[2]),
    Height: parts => Math.abs(parts[3]),
  };

  function intersection(a, b) {
    const [one, other] = [edges(a), edges(b)];
    const left = Math.max(one[0], other[0]), top = Math.max(one[1], other[1]);
    const right = Math.min(one[2], other[2]), bottom = Math.min(one[3], other[3]);
    return isNull(a) || isNull(b) || left > right || top > bottom
        ? null : [left, top, right, bottom];
  }
  function union(a, b) {
    if (isNull(a)) return rect(...b);
    if (isNull(b)) return rect(...a);
    const [one, other] = [edges(a), edges(b)];
    return between(Math.min(one[0], other[0]), Math.min(one[1], other[1]),
                   Math.max(one[2], other[2]), Math.max(one[3], other[3]));
  }
  function integral(parts) {
    if (isNull(parts)) return rect(...parts);
    const [left, top, right, bottom] = edges(parts);
    return between(Math.floor(left), Math.floor(top), Math.ceil(right), Math.ceil(bottom));
  }
  function inset(parts, dx, dy) {
    const [left, top, right, bottom] = edges(parts);
    const isGone = left + dx > right - dx || top + dy > bottom - dy;
    return isGone ? nullRect() : between(left + dx, top + dy, right - dx, bottom - dy);
  }
  const contains = (parts, [x, y]) => {
    const [left, top, right, bottom] = edges(parts);
    return x >= left && x < right && y >= top && y < bottom;
  };
  const containsRect = (outer, inner) => {
    const [a, b] = [edges(outer), edges(inner)];
    return a[0] <= b[0] && a[1] <= b[1] && a[2] >= b[2] && a[3] >= b[3];
  };
  const same = (a, b) => a.every((each, i) => each === b[i]);
  const overlap = (a, b) => {
    const shared = intersection(a, b);
    return shared !== null && shared[0] < shared[2] && shared[1] < shared[3];
  };

  const functions = {};
  // `takes` are the fields of each argument, or null for a number.
  function define(names, takes, body) {
    for (const name of names) {
      functions[name] = (...values) => body(...takes.map((fields, i) => fields
          ? read(values[i], name, fields) : prelude.takeNumber(values[i], name)));
    }
  }
  const [aPoint, aSize, aRect, aRange] = [pointFields, sizeFields, rectFields, rangeFields];
  define(['CGPointMake'], [null, null], point);
  define(['CGSizeMake'], [null, null], size);
  define(['CGRectMake'], [null, null, null, null], rect);
  define(['NSMakeRange'], [null, null], range);
  for (const [name, body] of Object.entries(ofRect)) {
    define([`CGRectGet${name}`, `NS${name}`], [aRect], body);
  }
  define(['CGPointEqualToPoint', 'NSEqualPoints'], [aPoint, aPoint], same);
  define(['CGSizeEqualToSize', 'NSEqualSizes'], [aSize, aSize], same);
  define(['CGRectEqualToRect', 'NSEqualRects'], [aRect, aRect], same);
  define(['NSEqualRanges'], [aRange, aRange], same);
  define(['CGRectContainsPoint'], [aRect, aPoint], contains);
  define(['NSPointInRect'], [aPoint, aRect], (at, parts) => contains(parts, at));
  define(['CGRectContainsRect', 'NSContainsRect'], [aRect, aRect], containsRect);
  define(['CGRectIntersectsRect', 'NSIntersectsRect'], [aRect, aRect], overlap);
  define(['CGRectIntersection'], [aRect, aRect], (a, b) => {
    const shared = intersection(a, b);
    return shared ? between(...shared) : nullRect();
  });
  define(['NSIntersectionRect'], [aRect, aRect], (a, b) =>
    overlap(a, b) ? between(...intersection(a, b)) : rect(0, 0, 0, 0));
  define(['CGRectUnion', 'NSUnionRect'], [aRect, aRect], union);
  define(['CGRectInset', 'NSInsetRect'], [aRect, null, null], inset);
  define(['CGRectOffset', 'NSOffsetRect'], [aRect, null, null],
         ([x, y, width, height], dx, dy) => rect(x + dx, y + dy, width, height));
  define(['CGRectIntegral', 'NSIntegralRect'], [aRect], integral);
  define(['CGRectStandardize'], [aRect], parts => between(...edges(parts)));
  define(['CGRectIsEmpty', 'NSIsEmptyRect'], [aRect], isEmpty);
  define(['CGRectIsNull'], [aRect], isNull);
  define(['CGRectIsInfinite'], [aRect], parts => parts[2] === Number.MAX_VALUE);
  define(['NSMaxRange'], [aRange], ([location, length]) => location + length);
  define(['NSLocationInRange'], [null, aRange],
         (at, [location, length]) => at >= location && at < location + length);
  define(['NSUnionRange'], [aRange, aRange], (a, b) => {
    const start = Math.min(a[0], b[0]);
    return range(start, Math.max(a[0] + a[1], b[0] + b[1]) - start);
  });
  define(['NSIntersectionRange'], [aRange, aRange], (a, b) => {
    const start = Math.max(a[0], b[0]), end = Math.min(a[0] + a[1], b[0] + b[1]);
    return start < end ? range(start, end - start) : range(0, 0);
  });

  // "{1, 2}" and back; what cannot be read is 0.
  const asText = ([...numbers]) => numbers.length < 4 ? `{${numbers.join(', ')}}`
      : `{{${numbers[0]}, ${numbers[1]}}, {${numbers[2]}, ${numbers[3]}}}`;
  define(['NSStringFromSize', 'NSStringFromCGSize'], [aSize], asText);
  define(['NSStringFromRect', 'NSStringFromCGRect'], [aRect], asText);
  define(['NSStringFromCGPoint'], [aPoint], asText);
  define(['NSStringFromRange'], [aRange], asText);
  const numbersIn = (text, count, name) => {
    const found = prelude.takeString(text,
        name).match(/[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?/gi) ?? [];
    return Array.from({length: count}, (_, i) => Number(found[i] ?? 0));
  };
  const parse = (name, count, make) => {
    functions[name] = text => make(...numbersIn(text, count, name));
  };
  parse('NSSizeFromString', 2, size);
  parse('NSRectFromString', 4, rect);
  parse('NSRangeFromString', 2, range);
  parse('CGPointFromString', 2, point);
  parse('CGSizeFromString', 2, size);
  parse('CGRectFromString', 4, rect);
  prelude.defineFunctions(functions);

  // Each read is a new structure, which a script may change.
  const constants = {
    CGPointZero: () => point(0, 0), NSZeroPoint: () => point(0, 0),
    CGSizeZero: () => size(0, 0), NSZeroSize: () => size(0, 0),
    CGRectZero: () => rect(0, 0, 0, 0), NSZeroRect: () => rect(0, 0, 0, 0),
    CGRectNull: nullRect,
    CGRectInfinite: () => rect(-Number.MAX_VALUE / 2, -Number.MAX_VALUE / 2, Number.MAX_VALUE,
                               Number.MAX_VALUE),
  };
  for (const [name, get] of Object.entries(constants)) prelude.defineConstant(name, get);
})
