(function (prelude) {
  'use strict';

  // The values of a list without those that are equal to an earlier one.
  const unique = list => [...prelude.classNamed('NSSet').setWithArray_(list)];

  class OrderedSet {
    #values;
    constructor(values) { this.#values = unique(values); }
    values() { return this.#values; }
    replace(values) { this.#values = unique(values); }
    [Symbol.iterator]() { return this.#values[Symbol.iterator](); }
  }

  const fromList = (list, selector) => new OrderedSet(prelude.takeList(list ?? [], selector));
  const makers = prefix => ({
    [`${prefix}Array:`]: list => fromList(list, `${prefix}Array:`),
    [`${prefix}Set:`]: set => fromList(set, `${prefix}Set:`),
    [`${prefix}Objects:`]: (...values) => new OrderedSet(prelude.untilNil(values)),
  });
  return prelude.defineClass({
    name: 'NSOrderedSet',
    implementation: OrderedSet,
    initializers: {'init': () => new OrderedSet([]), ...makers('initWith')},
    classOperations: {'orderedSet': () => new OrderedSet([]), ...makers('orderedSetWith')},
    operations: {
      'count'() { return this.values().length; },
      'array'() { return [...this.values()]; },
      'set'() { return new Set(this.values()); },
      'firstObject'() { return this.values().firstObject(); },
      'lastObject'() { return this.values().lastObject(); },
      'objectAtIndex:'(index) { return this.values().objectAtIndex_(index); },
      'indexOfObject:'(value) { return this.values().indexOfObject_(value); },
      'containsObject:'(value) { return this.values().containsObject_(value); },
      'addObject:'(value) {
        this.replace([...this.values(), prelude.takeObject(value, 'addObject:')]);
      },
      'addObjectsFromArray:'(list) {
        this.replace([...this.values(), ...prelude.takeList(list, 'addObjectsFromArray:')]);
      },
      'removeObject:'(value) {
        this.replace(this.values().filter(each => !prelude.isEqual(each, value)));
      },
      'objectEnumerator'() { return prelude.enumeratorOf([...this.values()]); },
      'description'() { return prelude.description([...this.values()]); },
    },
    equals: (a, b) => prelude.isEqual([...a], [...b]),
  });
})
