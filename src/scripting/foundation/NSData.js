// Bytes are a Uint8Array.
(function (prelude) {
  'use strict';

  const {takeRange} = prelude;
  const takeBytes = (value, selector) => {
    if (value instanceof Uint8Array) return value;
    throw prelude.exception('NSInvalidArgumentException',
                            `${selector} takes bytes, not ${prelude.describeKind(value)}`);
  };
  const same = bytes => bytes;
  const fromFile = (path, error) => prelude.readFile(path, same, error, 'dataWithContentsOfFile:');
  const fromURL = (url, error) =>
      fromFile(prelude.pathOfFileURL(url, 'dataWithContentsOfURL:'), error);
  const makers = prefix => ({
    [`${prefix}ContentsOfFile:`]: path => fromFile(path, null),
    [`${prefix}ContentsOfFile:options:error:`]: (path, _, error) => fromFile(path, error),
    [`${prefix}ContentsOfURL:`]: url => fromURL(url, null),
    [`${prefix}ContentsOfURL:options:error:`]: (url, _, error) => fromURL(url, error),
    [`${prefix}Data:`]: data => takeBytes(data, `${prefix}Data:`).slice(),
    [`${prefix}Bytes:length:`]: (data, length) =>
        takeBytes(Array.isArray(data) ? Uint8Array.from(data) : data, `${prefix}Bytes:`)
            .slice(0, length),
  });

  prelude.defineClass({
    name: 'NSData',
    isInstance: value => value instanceof Uint8Array,
    prototypes: [Uint8Array.prototype],
    initializers: {
      'init': () => new Uint8Array(0),
      'initWithBase64EncodedString:options:': (text, options) =>
          prelude.native.fromBase64(prelude.takeString(text,
              'initWithBase64EncodedString:options:'),
                                    Boolean(options & 1)),
      ...makers('initWith'),
    },
    classOperations: {'data': () => new Uint8Array(0), ...makers('dataWith')},
    operations: {
      'bytes'() { return this; },
      'base64EncodedStringWithOptions:'() { return this.base64String(); },
      'base64Encoding'() { return this.base64String(); },
      'subdataWithRange:'(range) {
        return this.slice(...takeRange(range, this.length, 'subdataWithRange:'));
      },
      'isEqualToData:'(other) { return prelude.isEqual(this, other); },
      'writeToFile:atomically:'(path) {
        return prelude.writeFile(path, this, null, 'writeToFile:atomically:');
      },
      'writeToFile:options:error:'(path, _, error) {
        return prelude.writeFile(path, this, error, 'writeToFile:options:error:');
      },
      'writeToURL:atomically:'(url) {
        const selector = 'writeToURL:atomically:';
        return prelude.writeFile(prelude.pathOfFileURL(url, selector), this, null, selector);
      },
    },
  });
})
