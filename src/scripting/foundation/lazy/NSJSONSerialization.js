(function (prelude) {
  'use strict';

  const failed = (error, code, message) => {
    prelude.store(error, prelude.newError('NSCocoaErrorDomain', code, {
      NSLocalizedDescription: message, NSDebugDescription: message,
    }));
    return null;
  };
  const isKept = value => value === null || ['string', 'boolean'].includes(typeof value) ||
      typeof value === 'number' && Number.isFinite(value) || prelude.isString(value) ||
      value === prelude.nullObject();
  const maxDepth = 512;
  // Sets or dates cannot be kept, nor what contains itself.
  const isValid = (value, depth = 0) => {
    if (depth > maxDepth) return false;
    if (isKept(value)) return true;
    if (Array.isArray(value)) return value.every(each => isValid(each, depth + 1));
    return prelude.isDictionary(value) &&
        Object.values(value).every(each => isValid(each, depth + 1));
  };
  const sorted = value => {
    if (Array.isArray(value)) return value.map(sorted);
    if (!prelude.isDictionary(value)) return value;
    const entries = Object.keys(value).sort().map(key => [key, sorted(value[key])]);
    return Object.fromEntries(entries);
  };
  // Dictionaries with the operations of ours.
  const revive = (_, value) => prelude.isDictionary(value)
      ? Object.assign(prelude.newDictionary(), value) : value;

  return prelude.defineClass({
    name: 'NSJSONSerialization',
    isInstance: () => false,
    classOperations: {
      'isValidJSONObject:': value =>
          (Array.isArray(value) || prelude.isDictionary(value)) && isValid(value),
      'dataWithJSONObject:options:error:'(value, options, error) {
        const isTop = Array.isArray(value) || prelude.isDictionary(value) || options & 4;
        if (!isTop || !isValid(value)) {
          throw prelude.exception('NSInvalidArgumentException',
              `${prelude.describeKind(value)} or something in it cannot be written as JSON`);
        }
        const text = JSON.stringify(options & 2 ? sorted(value) : value, null, options & 1 ? 2 : 0);
        return prelude.encodeText(text, 4);
      },
      'JSONObjectWithData:options:error:'(data, options, error) {
        const text = data instanceof Uint8Array ? prelude.decodeText(data, 4) : null;
        if (text === null) return failed(error, 3840, 'the data is not text in UTF-8');
        try {
          return JSON.parse(text.replace(/^\ufeff/, ''), revive);
        } catch (problem) {
          return failed(error, 3840, `the data is not JSON: ${problem.message}`);
        }
      },
    },
  });
})
