// Checks of what scripts pass to the operations that are written in JavaScript.
(function (prelude) {
  'use strict';

  const invalid = message => prelude.exception('NSInvalidArgumentException', message);
  const wrong = (selector, wanted, value) =>
      invalid(`${selector} takes ${wanted}, not ${prelude.describeKind(value)}`);

  prelude.isString = value =>
      typeof value === 'string' || typeof value === 'object' && value instanceof String;
  prelude.isDictionary = value => {
    if (typeof value !== 'object' || value === null) return false;
    const prototype = Object.getPrototypeOf(value);
    return (prototype === prelude.dictionary || prototype === Object.prototype ||
            prototype === null) && value !== prelude.dictionary;
  };
  prelude.isBoxed = value => prelude.native.isBoxed(value);

  prelude.takeString = (value, selector) => {
    if (prelude.isString(value) || typeof value === 'number') return String(value);
    throw wrong(selector, 'a string', value);
  };
  prelude.takeNumber = (value, selector) => {
    if (typeof value === 'number' || typeof value === 'boolean') return Number(value);
    const isNumeric = prelude.isString(value) && String(value).trim() !== '' &&
        Number.isFinite(Number(value));
    if (isNumeric) return Number(value);
    throw wrong(selector, 'a number', value);
  };
  prelude.takeList = (value, selector) => {
    if (Array.isArray(value)) return value;
    if (value instanceof Set) return [...value];
    throw wrong(selector, 'a list', value);
  };
  prelude.takeDictionary = (value, selector) => {
    if (prelude.isDictionary(value)) return value;
    throw wrong(selector, 'a dictionary', value);
  };
  prelude.takeFunction = (value, selector) => {
    if (typeof value === 'function') return value;
    throw wrong(selector, 'a function', value);
  };
  prelude.takeObject = (value, selector) => {
    if (value !== null && value !== undefined) return value;
    throw wrong(selector, 'an object', value);
  };
  // An index below `length`.
  prelude.takeIndex = (index, length, selector) => {
    const number = prelude.takeNumber(index, selector);
    if (Number.isInteger(number) && number >= 0 && number < length) return number;
    throw prelude.exception('NSRangeException',
                            `${selector} takes an index below ${length}, not ${number}`);
  };
  // The first index of a range and the one after its last, both up to `length`.
  prelude.takeRange = (range, length, selector) => {
    const {location, length: count} = Object(range);
    if (typeof location !== 'number' || typeof count !== 'number') {
      throw wrong(selector, 'a range', range);
    }
    if (location >= 0 && count >= 0 && location + count <= length) {
      return [location, location + count];
    }
    throw prelude.exception('NSRangeException',
        `${selector} takes a range within 0 and ${length}, not {${location}, ${count}}`);
  };
  // Arguments up to the first nil, which ends them.
  prelude.untilNil = values => {
    const end = values.findIndex(each => each === null || each === undefined);
    return end < 0 ? values : values.slice(0, end);
  };
})
