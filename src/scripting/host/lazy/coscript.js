(function (prelude) {
  'use strict';

  return prelude.classNamed('COScript').currentCOScript();
})
