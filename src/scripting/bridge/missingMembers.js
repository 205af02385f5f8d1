// Members that an object does not have. To read one gives undefined, since scripts ask for the
// operations of a version in that way. To call it is an error that names the class and the nearest
// selector, as far as the script or Kelvar gets to see the error: the engine's own says little.
(function (prelude) {
  'use strict';

  // Functions that return the message, or an exception with it, by the names that were read last.
  const maxNames = 64;
  const describeByName = new Map();

  prelude.readMissing = (name, describe) => {
    describeByName.delete(name);
    describeByName.set(name, describe);
    if (describeByName.size > maxNames) {
      describeByName.delete(describeByName.keys().next().value);
    }
    return undefined;
  };

  const called = /(?:\.([\w$]+)|\]) is not a function\. \(In '[^]*' is undefined\)$/;

  // The error that a script catches, or that ends it.
  prelude.caught = error => {
    if (!(error instanceof TypeError)) return error;
    const found = called.exec(error.message);
    if (!found) return error;
    const name = found[1] ?? [...describeByName.keys()].pop();
    const describe = describeByName.get(name);
    // A later call of this name may be another object's.
    describeByName.clear();
    if (!describe) return error;
    const said = describe(name);
    if (said instanceof Error) {
      for (const place of ['line', 'column', 'sourceURL', 'stack']) said[place] = error[place];
      return said;
    }
    error.message = said;
    prelude.addMember(error, 'name', 'Error');
    return error;
  };

  // For a name that has just been read.
  prelude.missingMessage = name => describeByName.get(name)?.(name);
  prelude.add(globalThis, {__kelvarCaught: prelude.caught});
})
