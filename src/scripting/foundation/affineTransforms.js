// Transforms of the plane, as the structures of their own that functions take and return.
(function (prelude) {
  'use strict';

  class CGAffineTransform {
    constructor(a, b, c, d, tx, ty) { Object.assign(this, {a, b, c, d, tx, ty}); }
    toString() { return `[${Object.values(this).join(', ')}]`; }
  }
  const make = (...parts) => new CGAffineTransform(...parts);
  const take = (value, name) => {
    const parts = ['a', 'b', 'c', 'd', 'tx', 'ty'].map(key => value?.[key]);
    if (parts.every(each => typeof each === 'number')) return parts;
    throw prelude.exception('NSInvalidArgumentException',
                            `${name} takes a transform, not ${prelude.describeKind(value)}`);
  };
  // First one, then the other.
  const concat = ([a, b, c, d, x, y], [A, B, C, D, X, Y]) =>
      make(a * A + b * C, a * B + b * D, c * A + d * C, c * B + d * D, x * A + y * C + X,
           x * B + y * D + Y);
  const apply = ([a, b, c, d, tx, ty], x, y) => [a * x + c * y + tx, b * x + d * y + ty];
  const kinds = {
    Translation: (x, y) => [1, 0, 0, 1, x, y],
    Scale: (x, y) => [x, 0, 0, y, 0, 0],
    Rotation(angle) {
      const [cos, sin] = [Math.cos(angle), Math.sin(angle)];
      return [cos, sin, -sin, cos, 0, 0];
    },
  };
  const functions = {
    CGAffineTransformMake: make,
    CGAffineTransformConcat: (one, other) => concat(
        take(one, 'CGAffineTransformConcat'), take(other, 'CGAffineTransformConcat')),
    CGAffineTransformInvert(transform) {
      const [a, b, c, d, x, y] = take(transform, 'CGAffineTransformInvert');
      const area = a * d - b * c;
      return area === 0 ? transform : make(d / area, -b / area, -c / area, a / area,
                                           (c * y - d * x) / area, (b * x - a * y) / area);
    },
    CGAffineTransformEqualToTransform(one, other) {
      const parts = take(other, 'CGAffineTransformEqualToTransform');
      return take(one, 'CGAffineTransformEqualToTransform').every((each, i) => each === parts[i]);
    },
    CGAffineTransformIsIdentity: transform =>
        String(take(transform, 'CGAffineTransformIsIdentity')) === '1,0,0,1,0,0',
    CGPointApplyAffineTransform: (point, transform) => prelude.point(
        ...apply(take(transform, 'CGPointApplyAffineTransform'), point.x, point.y)),
    CGSizeApplyAffineTransform(size, transform) {
      const [a, b, c, d] = take(transform, 'CGSizeApplyAffineTransform');
      return prelude.size(...apply([a, b, c, d, 0, 0], size.width, size.height));
    },
    CGRectApplyAffineTransform(rect, transform) {
      const parts = take(transform, 'CGRectApplyAffineTransform');
      const {origin: {x, y}, size: {width, height}} = rect;
      const corners = [[x, y], [x + width, y], [x, y + height], [x + width, y + height]].map(
          ([left, top]) => apply(parts, left, top));
      const [xs, ys] = [0, 1].map(i => corners.map(each => each[i]));
      const [left, top] = [Math.min(...xs), Math.min(...ys)];
      return prelude.rect(left, top, Math.max(...xs) - left, Math.max(...ys) - top);
    },
  };
  for (const [kind, parts] of Object.entries(kinds)) {
    const verb = {Translation: 'Translate', Scale: 'Scale', Rotation: 'Rotate'}[kind];
    functions[`CGAffineTransformMake${kind}`] = (...values) => make(...parts(...values));
    functions[`CGAffineTransform${verb}`] = (transform, ...values) =>
        concat(parts(...values), take(transform, `CGAffineTransform${verb}`));
  }
  prelude.defineFunctions(functions);
  prelude.defineConstant('CGAffineTransformIdentity', () => make(1, 0, 0, 1, 0, 0));
})
