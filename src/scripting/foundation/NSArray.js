// Lists are JavaScript's own, and all of them can be changed.
(function (prelude) {
  'use strict';

  const {takeIndex, takeRange, takeList, takeObject, takeFunction, untilNil} = prelude;

  const indexOf = (list, value, from = 0, to = list.length) => {
    for (let i = from; i < to; ++i) {
      if (list[i] === value) return i;
    }
    if (typeof value !== 'object' || value === null) {
      if (typeof value === 'string') {
        return list.findIndex((each, i) => i >= from && i < to && prelude.isMutableString(each) &&
            String(each) === value);
      }
      if (typeof value !== 'number' && typeof value !== 'boolean') return -1;
    }
    return list.findIndex((each, i) => i >= from && i < to && prelude.isEqual(each, value));
  };
  const found = index => index < 0 ? globalThis.NSNotFound : index;
  const identical = (list, value) => found(list.indexOf(value));

  function enumerate(list, block, selector, isReverse) {
    takeFunction(block, selector);
    const stop = prelude.newPointer(false);
    for (let i = 0; i < list.length && !stop.value(); ++i) {
      const at = isReverse ? list.length - 1 - i : i;
      block(list[at], at, stop);
    }
  }
  function enumeratorOf(list) {
    let next = 0;
    const take = () => next < list.length ? list[next++] : null;
    return prelude.newEnumerator(take, () => list.slice(next, next = list.length));
  }
  const comparator = (compare, selector) => {
    takeFunction(compare, selector);
    return (a, b) => Number(compare(a, b));
  };
  const bySelector = selector => {
    const name = prelude.scriptName(prelude.takeString(selector, 'sortedArrayUsingSelector:'));
    return (a, b) => Number(name === 'compare_' && typeof a !== 'object' ? prelude.compare(a, b)
                                                                         : __kelvarSend(a, name,
                                                                             b));
  };
  const byDescriptors = descriptors => {
    const all = takeList(descriptors, 'sortedArrayUsingDescriptors:');
    return (a, b) => {
      for (const each of all) {
        const order = each.compareObject_toObject_(a, b);
        if (order !== 0) return order;
      }
      return 0;
    };
  };
  // In place of JavaScript's own, which puts undefined last without asking.
  const sorted = (list, compare) => [...list].sort(compare);
  const replace = (list, values) => { list.splice(0, list.length, ...values); };
  const matching = (list, predicate) => {
    takeObject(predicate, 'filteredArrayUsingPredicate:');
    return list.filter(each => predicate.evaluateWithObject_(each));
  };
  const perform = (list, selector, values) => {
    for (const each of [...list]) {
      __kelvarSend(each, prelude.scriptName(String(selector)), ...values);
    }
  };
  const indexesOf = (indexes, length, selector) =>
      prelude.indexesIn(indexes, selector).map(each => takeIndex(each, length, selector));
  const passing = (list, test, selector) => {
    takeFunction(test, selector);
    const stop = prelude.newPointer(false);
    const indexes = [];
    for (let i = 0; i < list.length && !stop.value(); ++i) {
      if (test(list[i], i, stop)) indexes.push(i);
    }
    return indexes;
  };

  const readFile = path => prelude.readPropertyList(path, Array.isArray);
  const makers = prefix => ({
    [`${prefix}Object:`]: value => [takeObject(value, `${prefix}Object:`)],
    [`${prefix}Objects:`]: (...values) => untilNil(values),
    [`${prefix}Objects:count:`]: (values, count) => takeList(values, prefix).slice(0, count),
    [`${prefix}Array:`]: list => [...takeList(list ?? [], `${prefix}Array:`)],
    [`${prefix}Array:copyItems:`]: (list, deep) => takeList(list ?? [], `${prefix}Array:`)
        .map(each => deep ? prelude.copy(each) : each),
    [`${prefix}ContentsOfFile:`]: readFile,
  });

  const listType = prelude.defineClass({
    name: 'NSArray',
    isInstance: value => Array.isArray(value),
    prototypes: [Array.prototype],
    initializers: {'init': () => [], ...makers('initWith')},
    classOperations: {'array': () => [], ...makers('arrayWith')},
    operations: {
      'count'() { return this.length; },
      'firstObject'() { return this.length > 0 ? this[0] : null; },
      'lastObject'() { return this.length > 0 ? this[this.length - 1] : null; },
      'objectAtIndex:'(index) {
        if (index >= 0 && index < this.length && Number.isInteger(index)) return this[index];
        const number = prelude.takeNumber(index, 'objectAtIndex:');
        // Loops over a list's keys have them as text.
        if (number !== index) return this.objectAtIndex_(number);
        throw prelude.exception('NSRangeException',
            `the list has no object at ${index}, only ${this.length} in all`);
      },
      'objectAtIndexedSubscript:'(index) { return this.objectAtIndex_(index); },
      'objectsAtIndexes:'(indexes) {
        return indexesOf(indexes, this.length, 'objectsAtIndexes:').map(each => this[each]);
      },
      'insertObjects:atIndexes:'(objects, indexes) {
        const added = takeList(objects, 'insertObjects:atIndexes:');
        const places = prelude.indexesIn(indexes, 'insertObjects:atIndexes:');
        if (added.length !== places.length) {
          throw prelude.exception('NSInvalidArgumentException',
              `insertObjects:atIndexes: takes as many indexes as objects, not ${places.length} ` +
              `and ${added.length}`);
        }
        places.forEach((at, i) => this.insertObject_atIndex_(added[i], at));
      },
      'containsObject:'(value) { return indexOf(this, value) >= 0; },
      'indexOfObject:'(value) { return found(indexOf(this, value)); },
      'indexOfObject:inRange:'(value, range) {
        return found(indexOf(this, value, ...takeRange(range, this.length,
            'indexOfObject:inRange:')));
      },
      'indexOfObjectIdenticalTo:'(value) { return identical(this, value); },
      'indexOfObjectPassingTest:'(test) {
        takeFunction(test, 'indexOfObjectPassingTest:');
        const stop = prelude.newPointer(false);
        return found(this.findIndex((each, i) => test(each, i, stop)));
      },
      'indexesOfObjectsPassingTest:'(test) {
        return prelude.newIndexSet(passing(this, test, 'indexesOfObjectsPassingTest:'));
      },
      'firstObjectCommonWithArray:'(other) {
        return this.find(each => indexOf(other, each) >= 0) ?? null;
      },
      'isEqualToArray:'(other) { return Array.isArray(other) && prelude.isEqual(this, other); },
      'componentsJoinedByString:'(separator) {
        return this.map(each =>
            prelude.isString(each) ? String(each) : prelude.format('%@', [each]))
            .join(prelude.takeString(separator, 'componentsJoinedByString:'));
      },
      'arrayByAddingObject:'(value) {
        return [...this, takeObject(value, 'arrayByAddingObject:')];
      },
      'arrayByAddingObjectsFromArray:'(other) {
        return [...this, ...takeList(other, 'arrayByAddingObjectsFromArray:')];
      },
      'subarrayWithRange:'(range) {
        return this.slice(...takeRange(range, this.length, 'subarrayWithRange:'));
      },
      'objectEnumerator'() { return enumeratorOf(this); },
      'reverseObjectEnumerator'() { return enumeratorOf([...this].reverse()); },
      'enumerateObjectsUsingBlock:'(block) {
        enumerate(this, block, 'enumerateObjectsUsingBlock:');
      },
      'enumerateObjectsWithOptions:usingBlock:'(options, block) {
        enumerate(this, block, 'enumerateObjectsWithOptions:usingBlock:', (options & 2) !== 0);
      },
      'makeObjectsPerformSelector:'(selector) { perform(this, selector, []); },
      'makeObjectsPerformSelector:withObject:'(selector, value) {
        perform(this, selector, [value]);
      },
      'sortedArrayUsingSelector:'(selector) { return sorted(this, bySelector(selector)); },
      'sortedArrayUsingDescriptors:'(descriptors) {
        return sorted(this, byDescriptors(descriptors));
      },
      'sortedArrayUsingComparator:'(compare) {
        return sorted(this, comparator(compare, 'sortedArrayUsingComparator:'));
      },
      'filteredArrayUsingPredicate:'(predicate) { return matching(this, predicate); },
      'pathsMatchingExtensions:'(extensions) {
        return this.filter(each => extensions.includes(each.pathExtension()));
      },
      'writeToFile:atomically:'(path) { return prelude.writePropertyList(path, this); },

      'addObject:'(value) { this.push(takeObject(value, 'addObject:')); },
      'addObjectsFromArray:'(other) {
        for (const each of [...takeList(other, 'addObjectsFromArray:')]) this.push(each);
      },
      'insertObject:atIndex:'(value, index) {
        const at = takeIndex(index, this.length + 1, 'insertObject:atIndex:');
        this.splice(at, 0, takeObject(value, 'insertObject:atIndex:'));
      },
      'removeObject:'(value) {
        for (let i = indexOf(this, value); i >= 0; i = indexOf(this, value)) this.splice(i, 1);
      },
      'removeObjectIdenticalTo:'(value) {
        for (let i = this.indexOf(value); i >= 0; i = this.indexOf(value)) this.splice(i, 1);
      },
      'removeObjectAtIndex:'(index) {
        this.splice(takeIndex(index, this.length, 'removeObjectAtIndex:'), 1);
      },
      'removeObjectsAtIndexes:'(indexes) {
        const gone = new Set(indexesOf(indexes, this.length, 'removeObjectsAtIndexes:'));
        replace(this, this.filter((_, i) => !gone.has(i)));
      },
      'removeObjectsInArray:'(other) {
        const gone = takeList(other, 'removeObjectsInArray:');
        replace(this, this.filter(each => indexOf(gone, each) < 0));
      },
      'removeObjectsInRange:'(range) {
        const [from, to] = takeRange(range, this.length, 'removeObjectsInRange:');
        this.splice(from, to - from);
      },
      'removeAllObjects'() { this.length = 0; },
      'removeLastObject'() { this.pop(); },
      'replaceObjectAtIndex:withObject:'(index, value) {
        const selector = 'replaceObjectAtIndex:withObject:';
        this[takeIndex(index, this.length, selector)] = takeObject(value, selector);
      },
      'setObject:atIndexedSubscript:'(value, index) { this[index] = value; },
      'exchangeObjectAtIndex:withObjectAtIndex:'(one, other) {
        const selector = 'exchangeObjectAtIndex:withObjectAtIndex:';
        const a = takeIndex(one, this.length, selector);
        const b = takeIndex(other, this.length, selector);
        [this[a], this[b]] = [this[b], this[a]];
      },
      'setArray:'(other) { replace(this, takeList(other, 'setArray:')); },
      'sortUsingSelector:'(selector) { replace(this, sorted(this, bySelector(selector))); },
      'sortUsingDescriptors:'(descriptors) {
        replace(this, sorted(this, byDescriptors(descriptors)));
      },
      'sortUsingComparator:'(compare) {
        replace(this, sorted(this, comparator(compare, 'sortUsingComparator:')));
      },
      'filterUsingPredicate:'(predicate) { replace(this, matching(this, predicate)); },
    },
  });
  prelude.defineClass({
    name: 'NSMutableArray',
    base: listType,
    isAbstract: true,
    isInstance: value => Array.isArray(value),
    initializers: {'initWithCapacity:': () => []},
    classOperations: {'arrayWithCapacity:': () => []},
  });
  prelude.enumeratorOf = enumeratorOf;
  prelude.indexOf = indexOf;
})
