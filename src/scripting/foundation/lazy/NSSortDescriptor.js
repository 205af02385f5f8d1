(function (prelude) {
  'use strict';

  class SortDescriptor {
    constructor(key, ascending, compare, selector) {
      Object.assign(this, {key, ascending: Boolean(ascending), compare, selector});
    }
  }
  const takeKey = key => key === null || key === undefined
      ? 'self' : prelude.takeString(key, 'sortDescriptorWithKey:ascending:');
  const byName = selector => {
    const name = prelude.scriptName(prelude.takeString(selector, 'sortDescriptorWithKey:'));
    if (name === 'compare_') return prelude.compare;
    return (a, b) => prelude.isNull(a) || prelude.isNull(b) ? prelude.compare(a, b)
                                                            : Number(__kelvarSend(a, name, b));
  };
  const makers = prefix => ({
    [`${prefix}Key:ascending:`]: (key, ascending) =>
        new SortDescriptor(takeKey(key), ascending, prelude.compare, 'compare:'),
    [`${prefix}Key:ascending:selector:`]: (key, ascending, selector) =>
        new SortDescriptor(takeKey(key), ascending, byName(selector), String(selector)),
    [`${prefix}Key:ascending:comparator:`]: (key, ascending, compare) =>
        new SortDescriptor(takeKey(key), ascending,
                           prelude.takeFunction(compare, `${prefix}Key:ascending:comparator:`)),
  });

  return prelude.defineClass({
    name: 'NSSortDescriptor',
    implementation: SortDescriptor,
    initializers: makers('initWith'),
    classOperations: makers('sortDescriptorWith'),
    operations: {
      'key'() { return this.key; },
      'ascending'() { return this.ascending; },
      'selector'() { return this.selector ?? null; },
      'compareObject:toObject:'(a, b) {
        const [one, other] = [a, b].map(each => prelude.valueForKeyPath(each, this.key));
        const order = this.compare(one, other);
        return this.ascending ? order : -order;
      },
      'reversedSortDescriptor'() {
        return new SortDescriptor(this.key, !this.ascending, this.compare, this.selector);
      },
    },
    copy: value => value,
  });
})
