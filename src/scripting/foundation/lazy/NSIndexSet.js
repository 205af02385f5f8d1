(function (prelude) {
  'use strict';

  const takeIndex = (index, selector) => prelude.takeIndex(index, Infinity, selector);
  // Indexes in ascending order.
  class IndexSet {
    constructor(indexes = []) { this.replace(indexes); }
    replace(indexes) { this.indexes = [...new Set(indexes)].sort((a, b) => a - b); }
    *[Symbol.iterator]() { yield* this.indexes; }
  }
  const maxLength = 1e7;
  const inRange = ({location, length}) => {
    if (!(length >= 0 && length <= maxLength)) {
      throw prelude.exception('NSRangeException', `a range of ${length} indexes is too long`);
    }
    return Array.from({length}, (_, i) => location + i);
  };
  const found = index => index ?? globalThis.NSNotFound;
  const makers = prefix => ({
    [`${prefix}Index:`]: index => new IndexSet([takeIndex(index, `${prefix}Index:`)]),
    [`${prefix}IndexesInRange:`]: range => new IndexSet(inRange(range)),
    [`${prefix}IndexSet:`]: other => new IndexSet(other.indexes),
  });

  const type = prelude.defineClass({
    name: 'NSIndexSet',
    implementation: IndexSet,
    initializers: {'init': () => new IndexSet(), ...makers('initWith')},
    classOperations: {'indexSet': () => new IndexSet(), ...makers('indexSetWith')},
    operations: {
      'count'() { return this.indexes.length; },
      'firstIndex'() { return found(this.indexes[0]); },
      'lastIndex'() { return found(this.indexes.at(-1)); },
      'containsIndex:'(index) { return this.indexes.includes(index); },
      'containsIndexesInRange:'(range) {
        return inRange(range).every(each => this.indexes.includes(each));
      },
      'indexGreaterThanIndex:'(index) { return found(this.indexes.find(each => each > index)); },
      'indexLessThanIndex:'(index) { return found(this.indexes.findLast?.(each => each < index)); },
      'isEqualToIndexSet:'(other) { return prelude.isEqual(this, other); },
      'enumerateIndexesUsingBlock:'(block) {
        const stop = prelude.newPointer(false);
        for (const index of this.indexes) {
          block(index, stop);
          if (stop.value()) break;
        }
      },
      'addIndex:'(index) { this.replace([...this.indexes, takeIndex(index, 'addIndex:')]); },
      'addIndexes:'(other) { this.replace([...this.indexes, ...other.indexes]); },
      'addIndexesInRange:'(range) { this.replace([...this.indexes, ...inRange(range)]); },
      'removeIndex:'(index) { this.replace(this.indexes.filter(each => each !== index)); },
      'removeAllIndexes'() { this.replace([]); },
      'description'() { return `<NSIndexSet: ${this.indexes.join(' ')}>`; },
    },
    equals: (a, b) => prelude.isEqual(a.indexes, b.indexes),
    copy: value => new IndexSet(value.indexes),
  });
  prelude.makeIndexSet = indexes => new IndexSet(indexes);
  return type;
})
