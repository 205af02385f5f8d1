(function (prelude) {
  'use strict';

  // The host application, as far as the document tells about it.
  class Bundle {}
  const shared = new Bundle();
  const information = () => prelude.native.hostInformation();
  return prelude.defineClass({
    name: 'NSBundle',
    implementation: Bundle,
    initializers: {},
    classOperations: {'mainBundle': () => shared},
    operations: {
      'infoDictionary': () => information(),
      'objectForInfoDictionaryKey:': key => information()[String(key)] ?? null,
      'bundleIdentifier': () => information().CFBundleIdentifier ?? null,
    },
  });
})
