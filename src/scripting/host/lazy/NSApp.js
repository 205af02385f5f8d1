(function (prelude) {
  'use strict';

  return prelude.classNamed('NSApplication').sharedApplication();
})
