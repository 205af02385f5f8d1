(function (prelude) {
  'use strict';

  // Equal values count as one.
  class CountedSet {
    #values = [];
    #counts = [];
    #known = new Map();

    #indexOf(value) {
      const known = this.#known.get(value);
      if (known !== undefined) return known;
      const isPlain = typeof value !== 'object' || value === null;
      return isPlain ? -1 : this.#values.findIndex(each => prelude.isEqual(each, value));
    }
    add(value) {
      const index = this.#indexOf(value);
      if (index >= 0) {
        ++this.#counts[index];
        return;
      }
      this.#known.set(value, this.#values.length);
      this.#values.push(value);
      this.#counts.push(1);
    }
    remove(value) {
      const index = this.#indexOf(value);
      if (index < 0 || --this.#counts[index] > 0) return;
      this.#values.splice(index, 1);
      this.#counts.splice(index, 1);
      this.#known = new Map(this.#values.map((each, i) => [each, i]));
    }
    countOf(value) {
      const index = this.#indexOf(value);
      return index < 0 ? 0 : this.#counts[index];
    }
    values() { return [...this.#values]; }
    [Symbol.iterator]() { return this.values()[Symbol.iterator](); }
  }

  const fromList = list => {
    const set = new CountedSet();
    for (const each of list) set.add(each);
    return set;
  };
  const makers = prefix => ({
    [`${prefix}Array:`]: list => fromList(prelude.takeList(list ?? [], `${prefix}Array:`)),
    [`${prefix}Set:`]: set => fromList(prelude.takeList(set ?? [], `${prefix}Set:`)),
  });
  return prelude.defineClass({
    name: 'NSCountedSet',
    implementation: CountedSet,
    initializers: {'init': () => new CountedSet(), ...makers('initWith')},
    classOperations: {'set': () => new CountedSet(), ...makers('setWith')},
    operations: {
      'addObject:'(value) { this.add(prelude.takeObject(value, 'addObject:')); },
      'addObjectsFromArray:'(list) {
        for (const each of prelude.takeList(list, 'addObjectsFromArray:')) this.add(each);
      },
      'removeObject:'(value) { this.remove(value); },
      'countForObject:'(value) { return this.countOf(value); },
      'containsObject:'(value) { return this.countOf(value) > 0; },
      'count'() { return this.values().length; },
      'allObjects'() { return this.values(); },
      'anyObject'() { return this.values()[0] ?? null; },
      'objectEnumerator'() { return prelude.enumeratorOf(this.values()); },
      'description'() { return prelude.description(new Set(this.values())); },
    },
  });
})
