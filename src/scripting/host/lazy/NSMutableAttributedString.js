(function (prelude) {
  'use strict';

  prelude.classNamed('NSAttributedString');
  return prelude.classNamed('NSMutableAttributedString');
})
