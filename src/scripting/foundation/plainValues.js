// What Kelvar's classes take in place of the foundation's objects.
(function (prelude) {
  'use strict';

  // The value itself where nothing takes its place.
  prelude.plainValue = value => {
    if (prelude.isString(value)) return String(value);
    if (value instanceof Set) return [...value];
    if (value === prelude.nullObject()) return null;
    const type = Array.isArray(value) || prelude.isDictionary(value)
        ? null : prelude.classOf(value);
    if (!type || !prelude.descriptionOf(type).implementation) return value;
    throw prelude.exception('NSInvalidArgumentException',
        `${prelude.describeKind(value)} cannot be passed to Kelvar`);
  };
})
