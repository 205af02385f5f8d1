(function (prelude) {
  'use strict';

  const attempt = (error, body) => {
    try {
      return body();
    } catch (problem) {
      prelude.store(error, prelude.newError('NSCocoaErrorDomain', 3840,
                                            {NSLocalizedDescription: problem.message}));
      return null;
    }
  };
  const binaryFormat = 200;
  return prelude.defineClass({
    name: 'NSPropertyListSerialization',
    isInstance: () => false,
    classOperations: {
      'dataWithPropertyList:format:options:error:': (value, format, _, error) =>
          attempt(error, () => prelude.native.propertyListData(value, format === binaryFormat)),
      'propertyListWithData:options:format:error:': (data, _, format, error) =>
          attempt(error, () => prelude.native.propertyList(data)),
    },
  });
})
