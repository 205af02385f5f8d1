(function (prelude) {
  'use strict';

  class Locale {
    constructor(identifier) { this.identifier = identifier; }
  }
  const make = identifier =>
      new Locale(prelude.takeString(identifier, 'localeWithLocaleIdentifier:'));
  const current = () => make(new Intl.DateTimeFormat().resolvedOptions().locale.replace('-', '_'));
  const partsOf = locale => locale.identifier.replaceAll('-', '_').split('_');
  const keys = {
    kCFLocaleLanguageCodeKey: locale => partsOf(locale)[0],
    kCFLocaleCountryCodeKey: locale => partsOf(locale)[1] ?? null,
    kCFLocaleIdentifierKey: locale => locale.identifier,
  };
  prelude.isLocale = value => value instanceof Locale;
  return prelude.defineClass({
    name: 'NSLocale',
    implementation: Locale,
    initializers: {'initWithLocaleIdentifier:': make},
    classOperations: {
      'localeWithLocaleIdentifier:': make,
      'currentLocale': current,
      'autoupdatingCurrentLocale': current,
      'systemLocale': () => make('en_US_POSIX'),
      'preferredLanguages': () => [current().identifier.replaceAll('_', '-')],
    },
    operations: {
      'localeIdentifier'() { return this.identifier; },
      'languageCode'() { return keys.kCFLocaleLanguageCodeKey(this); },
      'countryCode'() { return keys.kCFLocaleCountryCodeKey(this); },
      'objectForKey:'(key) { return keys[key]?.(this) ?? null; },
    },
    equals: (a, b) => a.identifier === b.identifier,
    copy: value => value,
  });
})
