// Sets are JavaScript's own; equal lists or dictionaries in them count as one.
(function (prelude) {
  'use strict';

  const {takeList, takeObject, takeFunction, untilNil} = prelude;

  const isPlain = value => typeof value !== 'object' || value === null;
  // The element that is equal to the value, or undefined.
  const member = (set, value) => {
    if (set.has(value)) return value;
    if (isPlain(value) && typeof value !== 'string') return undefined;
    for (const each of set) if (!isPlain(each) && prelude.isEqual(each, value)) return each;
    return undefined;
  };
  const has = (set, value) => member(set, value) !== undefined;
  const add = (set, value) => { if (!has(set, value)) set.add(value); };
  const fromList = list => {
    const set = new Set();
    for (const each of list) add(set, each);
    return set;
  };
  const takeSet = (value, selector) =>
      value instanceof Set ? value : fromList(takeList(value, selector));
  const replace = (set, values) => {
    const kept = [...values];
    set.clear();
    for (const each of kept) set.add(each);
  };
  const makers = prefix => ({
    [`${prefix}Object:`]: value => new Set([takeObject(value, `${prefix}Object:`)]),
    [`${prefix}Objects:`]: (...values) => fromList(untilNil(values)),
    [`${prefix}Array:`]: list => fromList(takeList(list ?? [], `${prefix}Array:`)),
    [`${prefix}Set:`]: set => fromList(takeList(set ?? [], `${prefix}Set:`)),
  });

  const type = prelude.defineClass({
    name: 'NSSet',
    isInstance: value => value instanceof Set,
    prototypes: [Set.prototype],
    initializers: {'init': () => new Set(), ...makers('initWith')},
    classOperations: {'set': () => new Set(), ...makers('setWith')},
    operations: {
      'count'() { return this.size; },
      'anyObject'() { return this.size > 0 ? this.values().next().value : null; },
      'allObjects'() { return [...this]; },
      'containsObject:'(value) { return has(this, value); },
      'member:'(value) { return member(this, value) ?? null; },
      'isEqualToSet:'(other) { return prelude.isEqual(this, other); },
      'isSubsetOfSet:'(other) {
        const all = takeSet(other, 'isSubsetOfSet:');
        return [...this].every(each => has(all, each));
      },
      'intersectsSet:'(other) {
        const all = takeSet(other, 'intersectsSet:');
        return [...this].some(each => has(all, each));
      },
      'setByAddingObject:'(value) {
        return fromList([...this, takeObject(value, 'setByAddingObject:')]);
      },
      'setByAddingObjectsFromArray:'(list) {
        return fromList([...this, ...takeList(list, 'setByAddingObjectsFromArray:')]);
      },
      'setByAddingObjectsFromSet:'(set) {
        return fromList([...this, ...takeSet(set, 'setByAddingObjectsFromSet:')]);
      },
      'filteredSetUsingPredicate:'(predicate) {
        return new Set([...this].filter(each => predicate.evaluateWithObject_(each)));
      },
      'sortedArrayUsingDescriptors:'(descriptors) {
        return [...this].sortedArrayUsingDescriptors_(descriptors);
      },
      'objectEnumerator'() { return prelude.enumeratorOf([...this]); },
      'enumerateObjectsUsingBlock:'(block) {
        takeFunction(block, 'enumerateObjectsUsingBlock:');
        const stop = prelude.newPointer(false);
        for (const each of this) {
          block(each, stop);
          if (stop.value()) break;
        }
      },
      'makeObjectsPerformSelector:'(selector) { [...this].makeObjectsPerformSelector_(selector); },

      'addObject:'(value) { add(this, takeObject(value, 'addObject:')); },
      'addObjectsFromArray:'(list) {
        for (const each of takeList(list, 'addObjectsFromArray:')) add(this, each);
      },
      'removeObject:'(value) { this.delete(member(this, value)); },
      'removeAllObjects'() { this.clear(); },
      'unionSet:'(other) { for (const each of takeSet(other, 'unionSet:')) add(this, each); },
      'minusSet:'(other) {
        const gone = takeSet(other, 'minusSet:');
        replace(this, [...this].filter(each => !has(gone, each)));
      },
      'intersectSet:'(other) {
        const kept = takeSet(other, 'intersectSet:');
        replace(this, [...this].filter(each => has(kept, each)));
      },
      'setSet:'(other) { replace(this, takeSet(other, 'setSet:')); },
    },
  });
  prelude.defineClass({
    name: 'NSMutableSet',
    base: type,
    isAbstract: true,
    isInstance: value => value instanceof Set,
    initializers: {'initWithCapacity:': () => new Set()},
    classOperations: {'setWithCapacity:': () => new Set()},
  });
  prelude.setHas = has;
})
