(function (prelude) {
  'use strict';

  prelude.classNamed('NSSavePanel');
  return prelude.classNamed('NSOpenPanel');
})
