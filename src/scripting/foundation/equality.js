// When values are equal, and how they are copied.
(function (prelude) {
  'use strict';

  const maxDepth = 500;
  const sameLength = (a, b) => a.length === b.length;

  function equalEntries(a, b, depth) {
    const keys = Object.keys(a);
    return sameLength(keys, Object.keys(b)) &&
        keys.every(key => Object.hasOwn(b, key) && isEqual(a[key], b[key], depth));
  }

  function equalObjects(a, b, depth) {
    if (Array.isArray(a)) {
      return Array.isArray(b) && sameLength(a, b) && a.every((each, i) =>
          isEqual(each, b[i], depth));
    }
    if (a instanceof Date) return b instanceof Date && a.getTime() === b.getTime();
    if (a instanceof Uint8Array) {
      return b instanceof Uint8Array && sameLength(a, b) && a.every((each, i) => each === b[i]);
    }
    if (a instanceof Set) {
      return b instanceof Set && a.size === b.size && [...a].every(each => prelude.setHas(b, each));
    }
    if (prelude.structKind(a)) return prelude.structKind(a) === prelude.structKind(b) &&
        String(a) === String(b);
    if (prelude.isDictionary(a)) return prelude.isDictionary(b) && equalEntries(a, b, depth);
    const type = prelude.classOf(a);
    const equals = type && prelude.descriptionOf(type).equals;
    return equals ? prelude.classOf(b) === type && equals(a, b) : prelude.native.isEqual(a, b);
  }

  function isEqual(a, b, depth = 0) {
    if (depth > maxDepth) {
      throw prelude.exception('NSInvalidArgumentException',
                              'the lists or dictionaries are nested too deeply to compare');
    }
    if (a === b) return true;
    if (prelude.isString(a) && prelude.isString(b)) return String(a) === String(b);
    if (a === null || a === undefined || b === null || b === undefined) {
      return (a ?? null) === (b ?? null);
    }
    if (typeof a !== 'object' || typeof b !== 'object') {
      // As numbers, true is 1.
      const isNumber = value => typeof value === 'number' || typeof value === 'boolean';
      return isNumber(a) && isNumber(b) && Number(a) === Number(b);
    }
    return equalObjects(a, b, depth + 1);
  }

  function copy(value) {
    if (Array.isArray(value)) return [...value];
    if (value instanceof Date) return new Date(value);
    if (value instanceof Uint8Array) return value.slice();
    if (value instanceof Set) return new Set(value);
    if (prelude.structKind(value)) return prelude.copyStructure(value);
    if (prelude.isDictionary(value)) return Object.assign(prelude.newDictionary(), value);
    if (prelude.isString(value)) return String(value);
    if (typeof value !== 'object' || prelude.isClass(value) || prelude.isBoxed(value)) return value;
    const type = prelude.classOf(value);
    const own = type && prelude.descriptionOf(type).copy;
    const made = own ? own(value) : prelude.native.copyOf(value);
    if (made !== null) return made;
    throw prelude.exception('NSInvalidArgumentException',
                            `${prelude.describeKind(value)} cannot be copied`);
  }

  prelude.isEqual = (a, b) => isEqual(a, b);
  prelude.copy = copy;
  prelude.mutableCopy = value =>
      prelude.isString(value) ? prelude.newMutableString(String(value)) : copy(value);
})
