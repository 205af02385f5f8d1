// Functions and constants that scripts use by name. They are not enumerable, and a script may
// declare the same names.
(function (prelude) {
  'use strict';

  const functionNames = [], constantNames = [];
  prelude.defineFunctions = functions => {
    functionNames.push(...Object.keys(functions));
    prelude.add(globalThis, functions);
  };
  prelude.defineConstant = (name, get) => {
    constantNames.push(name);
    prelude.accessor(globalThis, name, get, value => {
      Object.defineProperty(globalThis, name, {value, writable: true, configurable: true});
    });
  };
  prelude.defineConstants = constants => {
    constantNames.push(...Object.keys(constants));
    prelude.add(globalThis, constants);
  };
  prelude.scriptFunctions = () => functionNames;
  prelude.scriptConstants = () => constantNames;
})
