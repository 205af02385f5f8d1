// Functions about the user's folders.
(function (prelude) {
  'use strict';

  // Below the home folder, by the platform's number of the directory.
  const folders = {
    1: 'Applications', 5: 'Library', 7: '', 9: 'Documents', 12: 'Desktop', 13: 'Library/Caches',
    14: 'Library/Application Support', 15: 'Downloads', 19: 'Pictures',
  };
  prelude.defineFunctions({
    NSHomeDirectory: () => prelude.native.homeDirectory(),
    NSTemporaryDirectory: () => prelude.native.temporaryDirectory().replace(/\/?$/, '/'),
    NSUserName: () => prelude.native.system().userName,
    NSFullUserName: () => prelude.native.system().fullUserName,
    NSSearchPathForDirectoriesInDomains(directory, domains, expandsTilde) {
      const name = folders[Number(directory)];
      if (name === undefined || !(Number(domains) & 1)) return [];
      const path = name === '' ? '~' : `~/${name}`;
      return [expandsTilde ? path.stringByExpandingTildeInPath() : path];
    },
  });

  // Made when they are first needed.
  prelude.newIndexSet = indexes => {
    prelude.classNamed('NSIndexSet');
    return prelude.makeIndexSet(indexes);
  };
  prelude.indexesIn = (indexes, selector) => {
    if (Array.isArray(indexes)) return indexes;
    if (prelude.isInstance(indexes, prelude.classNamed('NSIndexSet'))) return [...indexes];
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes an index set, not ${prelude.describeKind(indexes)}`);
  };
})
