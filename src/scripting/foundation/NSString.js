// Strings are JavaScript's own; a mutable one is an object that holds one.
(function (prelude) {
  'use strict';

  const {takeString, takeRange, takeIndex, takeFunction} = prelude;
  const text = (value, selector) => takeString(value, selector);
  const setOf = (value, selector) => {
    if (prelude.isInstance(value, prelude.classNamed('NSCharacterSet'))) return value;
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes a character set, not ${prelude.describeKind(value)}`);
  };

  // As far as it reads as a number, after blanks.
  const leading = (string, pattern) => String(string).trimStart().match(pattern)?.[0] ?? '0';
  const wholeIn = (string, least, most) =>
      Math.min(most, Math.max(least, Number(leading(string, /^[-+]?\d+/))));
  const realIn = string => Number(leading(string, /^[-+]?(\d+\.?\d*|\.\d+)([eE][-+]?\d+)?/));

  const fold = (string, options) => {
    let folded = string;
    if (options & 1) folded = folded.toLowerCase();
    if (options & 128) folded = folded.normalize('NFD').replace(/\p{M}/gu, '').normalize('NFC');
    return folded;
  };
  // Where `sought` is within the characters [from, to): its index and length, or null.
  function find(string, sought, options, from = 0, to = string.length) {
    const part = string.slice(from, to);
    if (options & 1024) {
      const found = new RegExp(sought, options & 1 ? 'iu' : 'u').exec(part);
      return found ? [from + found.index, found[0].length] : null;
    }
    if (sought === '') return null;
    const [where, what] = [fold(part, options), fold(sought, options)];
    const backwards = options & 4;
    let at = backwards ? where.lastIndexOf(what) : where.indexOf(what);
    if (options & 8) at = backwards ? (where.endsWith(what) ? where.length - what.length : -1)
                                    : (where.startsWith(what) ? 0 : -1);
    return at < 0 ? null : [from + at, what.length];
  }
  const rangeOf = found =>
      found ? prelude.range(...found) : prelude.range(globalThis.NSNotFound, 0);

  function compare(string, other, options = 0) {
    const [a, b] = [fold(string, options), fold(other, options)];
    if (options & 64) return Math.sign(a.localeCompare(b, 'en', {numeric: true}));
    return a < b ? -1 : a > b ? 1 : 0;
  }
  const localized = (string, other, options) =>
      Math.sign(String(string).localeCompare(text(other, 'localizedCompare:'), undefined, options));

  const capitalize = string => string.toLowerCase().replace(
      /(^|[^\p{L}\p{N}\p{M}'’])(\p{L})/gu, (_, before, letter) => before + letter.toUpperCase());

  function replaceAll(string, sought, replacement, options, range, selector) {
    const [from, to] = range ? takeRange(range, string.length, selector) : [0, string.length];
    const part = string.slice(from, to);
    let replaced;
    if (options & 1024) {
      const template = replacement.replace(/\$(\d)/g, (_, group) =>
          group === '0' ? '$&' : `$${group}`);
      replaced = part.replace(new RegExp(sought, options & 1 ? 'giu' : 'gu'), template);
    } else if (sought === '') {
      replaced = part;
    } else if (options & 1) {
      const literal = sought.replace(/[\\^$.*+?()[\]{}|/-]/g, '\\$&');
      replaced = part.replace(new RegExp(literal, 'gi'), () => replacement);
    } else {
      replaced = part.split(sought).join(replacement);
    }
    return string.slice(0, from) + replaced + string.slice(to);
  }

  function trim(string, set) {
    const characters = [...string];
    let from = 0, to = characters.length;
    while (from < to && set.has(characters[from])) ++from;
    while (to > from && set.has(characters[to - 1])) --to;
    return characters.slice(from, to).join('');
  }
  function splitAt(string, set) {
    const parts = [''];
    for (const character of string) {
      if (set.has(character)) parts.push('');
      else parts[parts.length - 1] += character;
    }
    return parts;
  }

  const withFormat = (format, ...values) =>
      prelude.format(text(format, 'stringWithFormat:'), values);
  const fromData = (data, encoding) => prelude.decodeText(data, encoding);
  const fromFile = (path, encoding, error) => prelude.readFile(
      path, bytes => prelude.decodeText(bytes, encoding ?? 4), error, 'stringWithContentsOfFile:');
  const fromURL = (url, encoding, error) =>
      fromFile(prelude.pathOfFileURL(url, 'stringWithContentsOfURL:'), encoding, error);

  const making = withPrefix => ({
    [`${withPrefix}String:`]: string => text(string, `${withPrefix}String:`),
    [`${withPrefix}Format:`]: withFormat,
    [`${withPrefix}UTF8String:`]: string => text(string, `${withPrefix}UTF8String:`),
    [`${withPrefix}ContentsOfFile:encoding:error:`]: fromFile,
    [`${withPrefix}ContentsOfFile:usedEncoding:error:`]: (path, _, error) =>
        fromFile(path, 4, error),
    [`${withPrefix}ContentsOfFile:`]: path => fromFile(path, 4, null),
    [`${withPrefix}ContentsOfURL:encoding:error:`]: fromURL,
  });
  prelude.stringMakers = making;

  prelude.defineClass({
    name: 'NSString',
    isInstance: prelude.isString,
    prototypes: [String.prototype],
    initializers: {
      'init': () => '',
      ...making('initWith'),
      'initWithData:encoding:': fromData,
      'initWithFormat:arguments:': (format, values) => prelude.format(String(format), values),
    },
    classOperations: {
      'string': () => '',
      ...making('stringWith'),
      'localizedStringWithFormat:': withFormat,
      'pathWithComponents:': parts =>
          prelude.joinPath(prelude.takeList(parts, 'pathWithComponents:')),
    },
    operations: {
      'UTF8String'() { return String(this); },
      'characterAtIndex:'(index) {
        return this.charCodeAt(takeIndex(index, this.length, 'characterAtIndex:'));
      },
      'substringFromIndex:'(index) {
        return this.slice(takeIndex(index, this.length + 1, 'substringFromIndex:'));
      },
      'substringToIndex:'(index) {
        return this.slice(0, takeIndex(index, this.length + 1, 'substringToIndex:'));
      },
      'substringWithRange:'(range) {
        return this.slice(...takeRange(range, this.length, 'substringWithRange:'));
      },
      'isEqualToString:'(other) {
        return prelude.isString(other) && String(this) === String(other);
      },
      'hasPrefix:'(prefix) { return this.startsWith(text(prefix, 'hasPrefix:')); },
      'hasSuffix:'(suffix) { return this.endsWith(text(suffix, 'hasSuffix:')); },
      'containsString:'(other) { return this.includes(text(other, 'containsString:')); },
      'localizedCaseInsensitiveContainsString:'(other) {
        return this.toLowerCase().includes(text(other, 'containsString:').toLowerCase());
      },
      'localizedStandardContainsString:'(other) {
        return fold(String(this), 129).includes(fold(text(other, 'containsString:'), 129));
      },
      'rangeOfString:'(sought) {
        return rangeOf(find(String(this), text(sought, 'rangeOfString:'), 0));
      },
      'rangeOfString:options:'(sought, options) {
        return rangeOf(find(String(this), text(sought, 'rangeOfString:options:'), options));
      },
      'rangeOfString:options:range:'(sought, options, range) {
        const selector = 'rangeOfString:options:range:';
        const [from, to] = takeRange(range, this.length, selector);
        return rangeOf(find(String(this), text(sought, selector), options, from, to));
      },
      'rangeOfCharacterFromSet:'(set) {
        setOf(set, 'rangeOfCharacterFromSet:');
        let at = 0;
        for (const character of String(this)) {
          if (set.has(character)) return prelude.range(at, character.length);
          at += character.length;
        }
        return rangeOf(null);
      },
      'compare:'(other) { return compare(String(this), text(other, 'compare:')); },
      'compare:options:'(other, options) {
        return compare(String(this), text(other, 'compare:options:'), options);
      },
      'caseInsensitiveCompare:'(other) {
        return compare(String(this), text(other, 'caseInsensitiveCompare:'), 1);
      },
      'localizedCompare:'(other) { return localized(this, other, {}); },
      'localizedCaseInsensitiveCompare:'(other) {
        return localized(this, other, {sensitivity: 'accent'});
      },
      'localizedStandardCompare:'(other) { return localized(this, other, {numeric: true}); },
      'commonPrefixWithString:options:'(other, options) {
        const [a, b] = [fold(String(this), options), fold(text(other, 'commonPrefix'), options)];
        let end = 0;
        while (end < a.length && a[end] === b[end]) ++end;
        return this.slice(0, end);
      },
      'uppercaseString'() { return this.toUpperCase(); },
      'lowercaseString'() { return this.toLowerCase(); },
      'capitalizedString'() { return capitalize(String(this)); },
      'localizedUppercaseString'() { return this.toLocaleUpperCase(); },
      'localizedLowercaseString'() { return this.toLocaleLowerCase(); },
      'localizedCapitalizedString'() { return capitalize(String(this)); },
      'stringByAppendingString:'(other) { return this + text(other, 'stringByAppendingString:'); },
      'stringByAppendingFormat:'(format, ...values) {
        return this + withFormat(format, ...values);
      },
      'stringByReplacingOccurrencesOfString:withString:'(sought, replacement) {
        const selector = 'stringByReplacingOccurrencesOfString:withString:';
        return replaceAll(String(this), text(sought, selector), text(replacement, selector), 0);
      },
      'stringByReplacingOccurrencesOfString:withString:options:range:'(
          sought, replacement, options, range) {
        const selector = 'stringByReplacingOccurrencesOfString:withString:options:range:';
        return replaceAll(String(this), text(sought, selector), text(replacement, selector),
            options,
                          range, selector);
      },
      'stringByReplacingCharactersInRange:withString:'(range, replacement) {
        const selector = 'stringByReplacingCharactersInRange:withString:';
        const [from, to] = takeRange(range, this.length, selector);
        return this.slice(0, from) + text(replacement, selector) + this.slice(to);
      },
      'stringByTrimmingCharactersInSet:'(set) {
        return trim(String(this), setOf(set, 'stringByTrimmingCharactersInSet:'));
      },
      'stringByPaddingToLength:withString:startingAtIndex:'(length, padding, start) {
        const selector = 'stringByPaddingToLength:withString:startingAtIndex:';
        const count = takeIndex(length, 2 ** 28, selector), pad = text(padding, selector);
        if (count <= this.length) return this.slice(0, count);
        const from = takeIndex(start, pad.length, selector);
        return (this + pad.slice(from)).padEnd(count, pad);
      },
      'stringByFoldingWithOptions:locale:'(options) { return fold(String(this), options); },
      'precomposedStringWithCanonicalMapping'() { return this.normalize('NFC'); },
      'decomposedStringWithCanonicalMapping'() { return this.normalize('NFD'); },
      'componentsSeparatedByString:'(separator) {
        const by = text(separator, 'componentsSeparatedByString:');
        return by === '' ? [String(this)] : this.split(by);
      },
      'componentsSeparatedByCharactersInSet:'(set) {
        return splitAt(String(this), setOf(set, 'componentsSeparatedByCharactersInSet:'));
      },
      'enumerateLinesUsingBlock:'(block) {
        takeFunction(block, 'enumerateLinesUsingBlock:');
        const stop = prelude.newPointer(false);
        const lines = String(this).split(/\r\n|\r|\n/);
        if (lines.at(-1) === '') lines.pop();
        for (const line of lines) {
          block(line, stop);
          if (stop.value()) break;
        }
      },
      'intValue'() { return wholeIn(this, -0x80000000, 0x7fffffff); },
      'integerValue'() { return wholeIn(this, -(2 ** 63), 2 ** 63); },
      'longLongValue'() { return wholeIn(this, -(2 ** 63), 2 ** 63); },
      'floatValue'() { return Math.fround(realIn(this)); },
      'doubleValue'() { return realIn(this); },
      'boolValue'() { return /^\s*(?:[-+]?0*[1-9]|[YyTt])/.test(this); },
      'stringValue'() { return String(this); },
      'description'() { return String(this); },
      'dataUsingEncoding:'(encoding) { return prelude.encodeText(String(this), encoding); },
      'dataUsingEncoding:allowLossyConversion:'(encoding, isLossy) {
        return prelude.encodeText(String(this), encoding, isLossy);
      },
      'cStringUsingEncoding:'(encoding) {
        return prelude.encodeText(String(this), encoding) === null ? null : String(this);
      },
      'fileSystemRepresentation'() { return String(this); },
      'lengthOfBytesUsingEncoding:'(encoding) {
        return prelude.encodeText(String(this), encoding)?.length ?? 0;
      },
      'canBeConvertedToEncoding:'(encoding) {
        return prelude.encodeText(String(this), encoding) !== null;
      },
      'writeToFile:atomically:encoding:error:'(path, _, encoding, error) {
        return prelude.writeFile(path, prelude.encodeText(String(this), encoding), error,
                                 'writeToFile:atomically:encoding:error:');
      },
      'writeToURL:atomically:encoding:error:'(url, _, encoding, error) {
        const selector = 'writeToURL:atomically:encoding:error:';
        return prelude.writeFile(prelude.pathOfFileURL(url, selector),
                                 prelude.encodeText(String(this), encoding), error, selector);
      },
      'writeToFile:atomically:'(path) {
        return prelude.writeFile(path, prelude.encodeText(String(this), 4), null,
                                 'writeToFile:atomically:');
      },
    },
  });
  prelude.replaceAll = replaceAll;
})
