(function (prelude) {
  'use strict';

  class Formatter {}
  const written = /^(\d{4})-(\d\d)-(\d\d)T(\d\d):(\d\d):(\d\d)(Z|[-+]\d\d:?\d\d)$/;
  return prelude.defineClass({
    name: 'NSISO8601DateFormatter',
    implementation: Formatter,
    operations: {
      'stringFromDate:': date =>
          `${prelude.takeDate(date, 'stringFromDate:').toISOString().slice(0, 19)}Z`,
      'dateFromString:'(text) {
        const string = prelude.takeString(text, 'dateFromString:');
        const date = new Date(string.replace(/([-+]\d\d)(\d\d)$/, '$1:$2'));
        return written.test(string) && !Number.isNaN(date.getTime()) ? date : null;
      },
    },
  });
})
