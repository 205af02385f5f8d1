// Files and their encodings, for the operations of strings, bytes, lists and dictionaries.
(function (prelude) {
  'use strict';

  const pathOf = (path, selector) => prelude.expandPath(prelude.takeString(path, selector));

  // The encodings that are known, by their numbers.
  const encodings = {
    1: 'ASCII', 4: 'UTF-8', 5: 'ISO-8859-1', 10: 'UTF-16', 0x90000100: 'UTF-16BE',
    0x94000100: 'UTF-16LE',
  };
  const encodingName = (encoding, wanted = encodings[Number(encoding)]) => {
    if (wanted) return wanted;
    throw prelude.exception('NSInvalidArgumentException',
                            `the text encoding ${prelude.describe(encoding)} is not supported`);
  };
  // Nil for text that the encoding does not have, or bytes that are none of its.
  prelude.encodeText = (text, encoding, isLossy = false) =>
      prelude.native.encodeText(text, encodingName(encoding), Boolean(isLossy));
  prelude.decodeText = (bytes, encoding) =>
      bytes instanceof Uint8Array ? prelude.native.decodeText(bytes, encodingName(encoding)) : null;

  // `failed` is an error of a native function: {code, message, path}.
  function fail(failed, error) {
    prelude.store(error, prelude.newError('NSCocoaErrorDomain', failed.code, {
      NSLocalizedDescription: failed.message, NSFilePath: failed.path,
    }));
    return null;
  }
  const succeeded = (result, error) => {
    if (!('message' in result)) return true;
    fail(result, error);
    return false;
  };
  prelude.fileSucceeded = succeeded;
  prelude.fileFailed = fail;

  prelude.readFile = (path, convert, error, selector) => {
    const read = prelude.native.readFile(pathOf(path, selector));
    if (read.message) return fail(read, error);
    const value = convert(read.bytes);
    return value ?? fail({code: 261, path, message: `${path} is not text in that encoding`}, error);
  };
  prelude.writeFile = (path, bytes, error, selector) => {
    const file = pathOf(path, selector);
    if (bytes === null) {
      const message = `the text cannot be written to ${file} in that encoding`;
      fail({code: 517, path: file, message}, error);
      return false;
    }
    return succeeded(prelude.native.writeFile(file, bytes), error);
  };
  prelude.pathOfFileURL = (url, selector) => {
    const text = prelude.isString(url) ? String(url) : url?.path?.();
    const isFile = prelude.isString(url) || url?.scheme?.() === 'file';
    if (isFile && text) return text;
    throw prelude.exception('NSInvalidArgumentException',
                            `${selector} takes the URL of a file, not ${String(url)}`);
  };

  prelude.readPropertyList = (path, fits) => {
    const read = prelude.native.readPropertyList(pathOf(path, 'initWithContentsOfFile:'));
    return fits(read) ? read : null;
  };
  prelude.writePropertyList = (path, value) =>
      succeeded(prelude.native.writePropertyList(pathOf(path, 'writeToFile:atomically:'), value),
          null);
})
