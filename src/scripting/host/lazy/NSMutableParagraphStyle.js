(function (prelude) {
  'use strict';

  prelude.classNamed('NSParagraphStyle');
  return prelude.classNamed('NSMutableParagraphStyle');
})
