(function (prelude) {
  'use strict';

  // Made together with its simpler kin.
  prelude.classNamed('NSPredicate');
  return prelude.classNamed('NSCompoundPredicate');
})
