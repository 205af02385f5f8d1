(function (prelude) {
  'use strict';

  // Tells characters of one set from others; `has` takes one as a string.
  class CharacterSet {
    constructor(has) { this.has = has; }
  }
  const ofPattern = pattern => () => new CharacterSet(character => pattern.test(character));
  const ofCharacters = text => {
    const characters = new Set(prelude.takeString(text, 'characterSetWithCharactersInString:'));
    return new CharacterSet(character => characters.has(character));
  };
  const ofRange = ({location, length}) => new CharacterSet(character => {
    const code = character.codePointAt(0);
    return code >= location && code < location + length;
  });
  const takeSet = (value, selector) => {
    if (value instanceof CharacterSet) return value;
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes a character set, not ${prelude.describeKind(value)}`);
  };

  const named = {
    'whitespaceCharacterSet': ofPattern(/^[\t\p{Zs}]$/u),
    'whitespaceAndNewlineCharacterSet': ofPattern(/^[\t-\r\x85\p{Z}]$/u),
    'newlineCharacterSet': ofPattern(/^[\n-\r\x85\u2028\u2029]$/),
    'alphanumericCharacterSet': ofPattern(/^[\p{L}\p{M}\p{N}]$/u),
    'letterCharacterSet': ofPattern(/^[\p{L}\p{M}]$/u),
    'decimalDigitCharacterSet': ofPattern(/^\p{Nd}$/u),
    'uppercaseLetterCharacterSet': ofPattern(/^[\p{Lu}\p{Lt}]$/u),
    'lowercaseLetterCharacterSet': ofPattern(/^\p{Ll}$/u),
    'capitalizedLetterCharacterSet': ofPattern(/^\p{Lt}$/u),
    'punctuationCharacterSet': ofPattern(/^\p{P}$/u),
    'symbolCharacterSet': ofPattern(/^\p{S}$/u),
    'controlCharacterSet': ofPattern(/^[\p{Cc}\p{Cf}]$/u),
    'URLQueryAllowedCharacterSet': ofPattern(/^[\w\-.~!$&'()*+,;=:@/?]$/),
    'URLPathAllowedCharacterSet': ofPattern(/^[\w\-.~!$&'()*+,=:@/]$/),
    'URLHostAllowedCharacterSet': ofPattern(/^[\w\-.~!$&'()*+,;=:[\]]$/),
    'URLFragmentAllowedCharacterSet': ofPattern(/^[\w\-.~!$&'()*+,;=:@/?]$/),
    'URLUserAllowedCharacterSet': ofPattern(/^[\w\-.~!$&'()*+,;=]$/),
    'URLPasswordAllowedCharacterSet': ofPattern(/^[\w\-.~!$&'()*+,;=]$/),
  };
  const copy = set => new CharacterSet(set.has);

  return prelude.defineClass({
    name: 'NSCharacterSet',
    implementation: CharacterSet,
    initializers: {'init': () => new CharacterSet(() => false)},
    classOperations: {
      ...named,
      'characterSet': () => new CharacterSet(() => false),
      'characterSetWithCharactersInString:': ofCharacters,
      'characterSetWithRange:': ofRange,
    },
    operations: {
      'characterIsMember:'(character) {
        return this.has(typeof character === 'number' ? String.fromCodePoint(character)
                                                      : String(character));
      },
      'longCharacterIsMember:'(code) { return this.has(String.fromCodePoint(code)); },
      'invertedSet'() { return new CharacterSet(character => !this.has(character)); },
      'invert'() {
        const {has} = this;
        this.has = character => !has(character);
      },
      'isSupersetOfSet:'(other) {
        const inner = takeSet(other, 'isSupersetOfSet:');
        for (let code = 0; code < 0x10000; ++code) {
          const character = String.fromCodePoint(code);
          if (inner.has(character) && !this.has(character)) return false;
        }
        return true;
      },
      'addCharactersInString:'(text) { this.formUnionWithCharacterSet_(ofCharacters(text)); },
      'addCharactersInRange:'(range) { this.formUnionWithCharacterSet_(ofRange(range)); },
      'removeCharactersInString:'(text) {
        const {has} = this, gone = ofCharacters(text);
        this.has = character => has(character) && !gone.has(character);
      },
      'formUnionWithCharacterSet:'(other) {
        const {has} = this, added = takeSet(other, 'formUnionWithCharacterSet:').has;
        this.has = character => has(character) || added(character);
      },
      'formIntersectionWithCharacterSet:'(other) {
        const {has} = this, kept = takeSet(other, 'formIntersectionWithCharacterSet:').has;
        this.has = character => has(character) && kept(character);
      },
    },
    copy,
  });
})
