(function (prelude) {
  'use strict';

  prelude.classNamed('NSPipe');
  return prelude.classNamed('NSFileHandle');
})
