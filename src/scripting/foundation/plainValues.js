// What Kelvar's classes take in place of the foundation's objects.
(function (prelude) {
  'use strict';

  prelude.attributedText = (text, runs) => {
    prelude.classNamed('NSAttributedString');
    return prelude.newAttributedString(text, runs);
  };
  // The value itself where nothing takes its place.
  prelude.plainValue = value => {
    if (prelude.isString(value)) return String(value);
    if (value instanceof Set) return [...value];
    if (value === prelude.nullObject()) return null;
    const type = Array.isArray(value) || prelude.isDictionary(value)
        ? null : prelude.classOf(value);
    if (!type || !prelude.descriptionOf(type).implementation) return value;
    const {plain} = prelude.descriptionOf(type);
    if (plain) return plain(value);
    throw prelude.exception('NSInvalidArgumentException',
        `${prelude.describeKind(value)} cannot be passed to Kelvar`);
  };
})
