(function (prelude) {
  'use strict';

  const {takeString, store} = prelude;
  class Scanner {
    constructor(text) {
      this.text = text;
      this.at = 0;
      this.skipped = NSCharacterSet.whitespaceAndNewlineCharacterSet();
      this.isExact = false;
    }
    skip() {
      while (this.at < this.text.length && this.skipped?.has(this.text[this.at])) ++this.at;
    }
    // Takes what the pattern matches here.
    take(pattern, pointer, convert) {
      const before = this.at;
      this.skip();
      const found = this.text.slice(this.at).match(pattern);
      if (!found) {
        this.at = before;
        return false;
      }
      this.at += found[0].length;
      store(pointer, convert(found[0]));
      return true;
    }
    takeWhile(test, pointer) {
      const before = this.at;
      this.skip();
      const from = this.at;
      while (this.at < this.text.length && test(this.at)) ++this.at;
      if (this.at === from) {
        this.at = before;
        return false;
      }
      store(pointer, this.text.slice(from, this.at));
      return true;
    }
    matches(text, at) {
      const here = this.text.slice(at, at + text.length);
      return this.isExact ? here === text : here.toLowerCase() === text.toLowerCase();
    }
  }
  const make = text => new Scanner(takeString(text, 'scannerWithString:'));
  const whole = /^[-+]?\d+/, real = /^[-+]?(\d+\.?\d*|\.\d+)(e[-+]?\d+)?/i;
  const hexadecimal = /^(0x)?[\da-f]+/i;

  return prelude.defineClass({
    name: 'NSScanner',
    implementation: Scanner,
    initializers: {'initWithString:': make},
    classOperations: {'scannerWithString:': make, 'localizedScannerWithString:': make},
    properties: {
      scanLocation: {get() { return this.at; }, set(at) { this.at = Number(at); }},
      charactersToBeSkipped: {
        get() { return this.skipped; },
        set(set) { this.skipped = set; },
      },
      caseSensitive: {get() { return this.isExact; }, set(is) { this.isExact = Boolean(is); }},
    },
    operations: {
      'string'() { return this.text; },
      'isAtEnd'() {
        const before = this.at;
        this.skip();
        const isAtEnd = this.at >= this.text.length;
        this.at = before;
        return isAtEnd;
      },
      'scanInt:'(pointer) { return this.take(whole, pointer, Number); },
      'scanInteger:'(pointer) { return this.take(whole, pointer, Number); },
      'scanLongLong:'(pointer) { return this.take(whole, pointer, Number); },
      'scanFloat:'(pointer) { return this.take(real, pointer, Number); },
      'scanDouble:'(pointer) { return this.take(real, pointer, Number); },
      'scanHexInt:'(pointer) {
        return this.take(hexadecimal, pointer, each => parseInt(each, 16));
      },
      'scanHexLongLong:'(pointer) {
        return this.take(hexadecimal, pointer, each => parseInt(each, 16));
      },
      'scanString:intoString:'(text, pointer) {
        const wanted = takeString(text, 'scanString:intoString:'), before = this.at;
        this.skip();
        if (wanted === '' || !this.matches(wanted, this.at)) {
          this.at = before;
          return false;
        }
        store(pointer, this.text.slice(this.at, this.at += wanted.length));
        return true;
      },
      'scanUpToString:intoString:'(text, pointer) {
        const wanted = takeString(text, 'scanUpToString:intoString:');
        return this.takeWhile(at => !this.matches(wanted, at), pointer);
      },
      'scanCharactersFromSet:intoString:'(set, pointer) {
        return this.takeWhile(at => set.has(this.text[at]), pointer);
      },
      'scanUpToCharactersFromSet:intoString:'(set, pointer) {
        return this.takeWhile(at => !set.has(this.text[at]), pointer);
      },
    },
  });
})
