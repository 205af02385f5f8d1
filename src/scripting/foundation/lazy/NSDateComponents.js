(function (prelude) {
  'use strict';

  prelude.classNamed('NSCalendar');
  return prelude.classNamed('NSDateComponents');
})
