// Dictionaries: objects with operations that loops over their keys do not see. Those that scripts
// write as literals have the operations in brackets.
(function (prelude) {
  'use strict';

  const {takeDictionary, takeList, takeObject, takeFunction} = prelude;

  prelude.dictionary = {};
  const make = () => Object.create(prelude.dictionary);
  const keyText = (key, selector) => {
    if (prelude.isString(key) || typeof key === 'number') return String(key);
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes a string as a key, not ${prelude.describeKind(key)}`);
  };
  const get = (dictionary, key) => Object.hasOwn(dictionary, key) ? dictionary[key] : null;
  // Also for keys that mean something to JavaScript, such as __proto__.
  const set = (dictionary, key, value) => {
    if (key in dictionary && !Object.hasOwn(dictionary, key)) {
      Object.defineProperty(dictionary, key,
                            {value, writable: true, enumerable: true, configurable: true});
    } else {
      dictionary[key] = value;
    }
  };
  const addAll = (dictionary, other) => {
    for (const key of Object.keys(other)) set(dictionary, key, other[key]);
    return dictionary;
  };
  function fromLists(values, keys, selector) {
    const [objects, names] = [takeList(values, selector), takeList(keys, selector)];
    if (objects.length !== names.length) {
      throw prelude.exception('NSInvalidArgumentException',
          `${selector} takes as many keys as objects, not ${names.length} and ${objects.length}`);
    }
    const made = make();
    names.forEach((name, i) => set(made, keyText(name, selector), objects[i]));
    return made;
  }
  function fromPairs(...values) {
    const pairs = prelude.untilNil(values), made = make();
    for (let i = 0; i + 1 < pairs.length; i += 2) {
      set(made, keyText(pairs[i + 1], 'dictionaryWithObjectsAndKeys:'), pairs[i]);
    }
    return made;
  }
  function enumerate(dictionary, block, selector) {
    takeFunction(block, selector);
    const stop = prelude.newPointer(false);
    for (const key of Object.keys(dictionary)) {
      block(key, dictionary[key], stop);
      if (stop.value()) return;
    }
  }
  const sortedKeys = (dictionary, compare) => Object.keys(dictionary).sort(
      (a, b) => Number(compare(dictionary[a], dictionary[b])));

  const makers = prefix => ({
    [`${prefix}Dictionary:`]: other =>
        addAll(make(), takeDictionary(other ?? {}, `${prefix}Dictionary:`)),
    [`${prefix}Objects:forKeys:`]: (values, keys) =>
        fromLists(values, keys, `${prefix}Objects:forKeys:`),
    [`${prefix}ObjectsAndKeys:`]: fromPairs,
    [`${prefix}ContentsOfFile:`]: path => prelude.readPropertyList(path, prelude.isDictionary),
  });

  const type = prelude.defineClass({
    name: 'NSDictionary',
    isInstance: prelude.isDictionary,
    prototypes: [prelude.dictionary],
    initializers: {'init': make, ...makers('initWith')},
    classOperations: {
      'dictionary': make,
      'dictionaryWithObject:forKey:'(value, key) {
        const selector = 'dictionaryWithObject:forKey:';
        const made = make();
        set(made, keyText(key, selector), takeObject(value, selector));
        return made;
      },
      ...makers('dictionaryWith'),
    },
    operations: {
      'count'() { return Object.keys(this).length; },
      'objectForKey:'(key) {
        return get(this, prelude.isString(key) || typeof key !== 'object' ? String(key) : '');
      },
      'objectForKeyedSubscript:'(key) { return get(this, String(key)); },
      'objectsForKeys:notFoundMarker:'(keys, marker) {
        return takeList(keys, 'objectsForKeys:notFoundMarker:').map(each =>
            get(this, each) ?? marker);
      },
      'allKeys'() { return Object.keys(this); },
      'allValues'() { return Object.values(this); },
      'allKeysForObject:'(value) {
        return Object.keys(this).filter(key => prelude.isEqual(this[key], value));
      },
      'keyEnumerator'() { return prelude.enumeratorOf(Object.keys(this)); },
      'objectEnumerator'() { return prelude.enumeratorOf(Object.values(this)); },
      'isEqualToDictionary:'(other) {
        return prelude.isDictionary(other) && prelude.isEqual(this, other);
      },
      'enumerateKeysAndObjectsUsingBlock:'(block) {
        enumerate(this, block, 'enumerateKeysAndObjectsUsingBlock:');
      },
      'keysSortedByValueUsingSelector:'(selector) {
        const name = prelude.scriptName(String(selector));
        return sortedKeys(this, (a, b) => __kelvarSend(a, name, b));
      },
      'keysSortedByValueUsingComparator:'(compare) {
        return sortedKeys(this, takeFunction(compare, 'keysSortedByValueUsingComparator:'));
      },
      // Of the attributes of a file.
      'fileSize'() { return get(this, 'NSFileSize') ?? 0; },
      'fileType'() { return get(this, 'NSFileType'); },
      'fileModificationDate'() { return get(this, 'NSFileModificationDate'); },
      'fileCreationDate'() { return get(this, 'NSFileCreationDate'); },
      'filePosixPermissions'() { return get(this, 'NSFilePosixPermissions') ?? 0; },

      'writeToFile:atomically:'(path) { return prelude.writePropertyList(path, this); },

      'setObject:forKey:'(value, key) {
        const selector = 'setObject:forKey:';
        set(this, keyText(key, selector), takeObject(value, selector));
      },
      'setObject:forKeyedSubscript:'(value, key) { set(this, keyText(key, 'setObject:'), value); },
      'removeObjectForKey:'(key) { delete this[keyText(key, 'removeObjectForKey:')]; },
      'removeObjectsForKeys:'(keys) {
        for (const key of takeList(keys, 'removeObjectsForKeys:')) delete this[key];
      },
      'removeAllObjects'() { for (const key of Object.keys(this)) delete this[key]; },
      'addEntriesFromDictionary:'(other) {
        addAll(this, takeDictionary(other, 'addEntriesFromDictionary:'));
      },
      'setDictionary:'(other) {
        const entries = {...takeDictionary(other, 'setDictionary:')};
        for (const key of Object.keys(this)) delete this[key];
        addAll(this, entries);
      },
    },
  });
  prelude.defineClass({
    name: 'NSMutableDictionary',
    base: type,
    isAbstract: true,
    isInstance: prelude.isDictionary,
    initializers: {'initWithCapacity:': make},
    classOperations: {'dictionaryWithCapacity:': make},
  });
  prelude.newDictionary = make;
  // Nil removes the entry.
  prelude.setEntry = (dictionary, key, value) => {
    if (value === null || value === undefined) delete dictionary[key];
    else set(dictionary, key, value);
  };
})
