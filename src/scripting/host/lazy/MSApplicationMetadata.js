// The host application, as far as the document tells about it.
(function (prelude) {
  'use strict';

  class ApplicationMetadata {}
  function metadata() {
    const known = prelude.native.hostInformation();
    const made = prelude.newDictionary();
    const keys = {
      app: 'CFBundleIdentifier', appVersion: 'CFBundleShortVersionString', build: 'CFBundleVersion',
    };
    for (const [name, key] of Object.entries(keys)) {
      if (key in known) made[name] = name === 'build' ? Number(known[key]) : known[key];
    }
    return made;
  }
  prelude.applicationMetadata = metadata;
  return prelude.defineClass({
    name: 'MSApplicationMetadata',
    implementation: ApplicationMetadata,
    initializers: {},
    classOperations: {'metadata': metadata},
  });
})
