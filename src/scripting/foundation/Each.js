// A list's `each`: a broadcast to its elements.
(function (prelude) {
  'use strict';

  const scriptName = selector => selector.replaceAll('_', '__').replaceAll(':', '_');

  // A selector's name may lack its last underscore, in the call and where a script defines it.
  const spellings = name => name.endsWith('_') ? [name, name.slice(0, -1)] : [name, `${name}_`];
  const nameIn = (element, name) =>
      element === null || element === undefined ? undefined :
          spellings(name).find(each => each in Object(element) &&
                                       typeof element[each] === 'function');

  // Each call goes to every element that has such a method, in order, also if the list is changed
  // meanwhile. What an element throws ends it.
  const broadcast = (list, name) => (...values) => {
    for (const element of [...list]) {
      const own = nameIn(element, name);
      if (own !== undefined) element[own](...values);
    }
  };

  prelude.each = list => {
    const own = {
      array: () => list,
      setArray_(array) { list = array; },
      respondsToSelector_(selector) {
        const name = scriptName(String(selector));
        return name in own || list.some(element => nameIn(element, name) !== undefined);
      },
      isKindOfClass_: () => false,
      className: () => 'Each',
      description: () => '<Each>',
      toString: () => '<Each>',
    };
    for (const name of ['setArray', 'respondsToSelector', 'isKindOfClass']) {
      own[name] = own[name + '_'];
    }
    return new Proxy(own, {
      get(_, name) {
        if (name in own || typeof name === 'symbol') return own[name];
        if (list.some(element => nameIn(element, name) !== undefined)) return broadcast(list, name);
        if (name === 'then' || name === 'toJSON') return undefined;
        throw new Error(`no element of the list has a selector ${name}`);
      },
      set(_, name, value) {
        if (name !== 'array') throw new Error(`Each has no property ${name} that can be set`);
        list = value;
        return true;
      },
    });
  };
})
