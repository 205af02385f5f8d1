// The class of what a list's `each` returns.
(function (prelude) {
  'use strict';

  const initWithArray_ = list => {
    if (Array.isArray(list)) return prelude.each(list);
    throw new Error('Each initWithArray: takes a list');
  };
  return {
    alloc: () => ({initWithArray_, initWithArray: initWithArray_, init: () => prelude.each([])}),
    new: () => prelude.each([]),
    name: () => 'Each',
    toString: () => 'Each',
  };
})
