// What every value answers, ours and JavaScript's.
(function (prelude) {
  'use strict';

  const article = kind => /^[aeiou]/i.test(kind) ? 'an' : 'a';
  const hashes = new WeakMap();
  let lastHash = 0;

  function hashOfText(text) {
    let hash = 5381;
    for (let i = 0; i < text.length; ++i) {
      hash = (hash * 33 + text.charCodeAt(i)) % 0x1fffffffffffff;
    }
    return hash;
  }

  // Equal values have equal hashes.
  function hash(value) {
    if (prelude.isString(value)) return hashOfText(String(value));
    if (typeof value === 'number' || typeof value === 'boolean') {
      return Number.isInteger(+value) ? Math.abs(+value) : hashOfText(String(value));
    }
    if (Array.isArray(value)) return value.length;
    if (value instanceof Date) return Math.abs(value.getTime());
    if (prelude.isDictionary(value)) return Object.keys(value).length;
    if (prelude.structKind(value) || value instanceof Uint8Array || value instanceof Set ||
        prelude.isBoxed(value)) {
      return hashOfText(String(value));
    }
    if (!hashes.has(value)) hashes.set(value, ++lastHash * 16);
    return hashes.get(value);
  }

  const isClass = value => {
    if (value === null || typeof value !== 'object') return false;
    return prelude.descriptionOf(value) !== null || prelude.native.isClass(value);
  };

  function isInstance(value, type) {
    const description = prelude.descriptionOf(type);
    if (description) return description.isInstance(value);
    return isClass(type) && (type.name() === 'NSObject' || value instanceof type);
  }

  function classOf(value) {
    const found = prelude.classOf(value);
    if (found) return found;
    return prelude.isDictionary(value) ? prelude.classNamed('NSDictionary') : globalThis.NSObject;
  }

  const requireSelector = selector => {
    if (prelude.isString(selector)) return String(selector);
    throw prelude.exception('NSInvalidArgumentException',
                            `a selector is a string, not ${prelude.describeKind(selector)}`);
  };
  function perform(object, selector, values) {
    const text = requireSelector(selector);
    const name = prelude.scriptName(text);
    // The number of arguments is that of the selector's colons.
    return __kelvarSend(object, name, ...values.slice(0, text.split(':').length - 1));
  }
  function respondsTo(value, selector) {
    const name = prelude.scriptName(requireSelector(selector));
    const shorter = name.endsWith('_') ? name.slice(0, -1) : name;
    const object = Object(value);
    return name === 'length' ? name in object
        : [name, shorter].some(each => each in object && typeof object[each] === 'function');
  }

  const operations = {
    'isEqual:'(other) { return prelude.isEqual(this, other); },
    'hash'() { return hash(this); },
    'self'() { return this; },
    'copy'() { return prelude.copy(this); },
    'mutableCopy'() { return prelude.mutableCopy(this); },
    'class'() { return classOf(this); },
    'className'() { return this.class().name(); },
    'superclass'() { return this.class().superclass(); },
    'isKindOfClass:'(type) { return isInstance(this, type); },
    'isMemberOfClass:'(type) { return this.class() === type; },
    'isProxy'() { return false; },
    'conformsToProtocol:'() { return false; },
    'respondsToSelector:'(selector) { return respondsTo(this, selector); },
    'performSelector:'(selector) { return perform(this, selector, []); },
    'performSelector:withObject:'(selector, value) {
      return perform(this, selector, [value]);
    },
    'performSelector:withObject:withObject:'(selector, first, second) {
      return perform(this, selector, [first, second]);
    },
    'performSelector:withObject:afterDelay:'(selector, value, delay) {
      const seconds = prelude.takeInterval(delay, 'performSelector:withObject:afterDelay:');
      const name = requireSelector(selector);
      prelude.startTimer(() => perform(this, name, [value]), seconds, false);
    },
    'description'() { return prelude.description(this); },
    'debugDescription'() { return this.description(); },
    'valueForKey:'(key) { return prelude.valueForKey(this, key); },
    'valueForKeyPath:'(path) { return prelude.valueForKeyPath(this, path); },
    'setValue:forKey:'(value, key) { prelude.setValueForKey(this, value, key); },
    'setValue:forKeyPath:'(value, path) {
      prelude.setValueForKeyPath(this, value, path);
    },
    'dictionaryWithValuesForKeys:'(keys) {
      const found = prelude.newDictionary();
      for (const key of keys) found[key] = prelude.valueForKey(this, key);
      return found;
    },
    // Memory is the engine's: old scripts still say these.
    'retain'() { return this; },
    'release'() {},
    'autorelease'() { return this; },
  };

  prelude.rootOperations = operations;
  prelude.rootObject = prelude.addOperations({}, operations);
  prelude.isClass = isClass;
  prelude.isInstance = isInstance;
  prelude.withArticle = kind => `${article(kind)} ${kind}`;
  prelude.describeKind = value => {
    const kind = prelude.kindOf(value);
    return kind === 'nil' ? kind : prelude.withArticle(kind);
  };
  prelude.kindOf = value => {
    if (value === null || value === undefined) return 'nil';
    if (isClass(value)) return `class ${prelude.nameOfClass(value)}`;
    if (prelude.isString(value)) return 'string';
    if (typeof value === 'bigint') return 'number';
    if (typeof value !== 'object') return typeof value;
    if (Array.isArray(value)) return 'list';
    if (prelude.isDictionary(value)) return 'dictionary';
    if (value instanceof Date) return 'date';
    return prelude.native.classNameOf(value) ?? prelude.nameOfClass(prelude.classOf(value)) ??
        'object';
  };
  prelude.namesIn = value => {
    const names = [];
    for (let at = Object(value); at && at !== Object.prototype; at = Object.getPrototypeOf(at)) {
      names.push(...Object.getOwnPropertyNames(at));
    }
    return prelude.isDictionary(value) ? [...names, ...prelude.namesIn(prelude.dictionary)] : names;
  };
  prelude.missingSelector = (owner, name, names) => {
    const nearest = prelude.native.nearest(name, names.filter(each => each !== 'constructor'));
    return prelude.exception('NSInvalidArgumentException', `${owner} has no selector ${name}` +
        (nearest ? `; the nearest is ${nearest}` : ''));
  };
})
