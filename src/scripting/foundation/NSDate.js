// Dates are JavaScript's own.
(function (prelude) {
  'use strict';

  const {takeNumber} = prelude;
  // 2001-01-01, from which the platform counts, in seconds after 1970.
  const reference = 978307200;
  const fromSeconds = seconds => new Date(seconds * 1000);
  const seconds = date => date.getTime() / 1000;
  const takeDate = (value, selector) => {
    if (value instanceof Date) return value;
    throw prelude.exception('NSInvalidArgumentException',
                            `${selector} takes a date, not ${prelude.describeKind(value)}`);
  };
  const now = () => new Date();
  const makers = prefix => ({
    [`${prefix}TimeIntervalSince1970:`]: each =>
        fromSeconds(takeNumber(each, `${prefix}TimeIntervalSince1970:`)),
    [`${prefix}TimeIntervalSinceReferenceDate:`]: each =>
        fromSeconds(takeNumber(each, `${prefix}TimeIntervalSinceReferenceDate:`) + reference),
    [`${prefix}TimeIntervalSinceNow:`]: each =>
        fromSeconds(takeNumber(each, `${prefix}TimeIntervalSinceNow:`) + seconds(now())),
    [`${prefix}TimeInterval:sinceDate:`]: (each, date) =>
        fromSeconds(takeNumber(each, `${prefix}TimeInterval:sinceDate:`) +
                    seconds(takeDate(date, `${prefix}TimeInterval:sinceDate:`))),
  });

  prelude.defineClass({
    name: 'NSDate',
    isInstance: value => value instanceof Date,
    prototypes: [Date.prototype],
    initializers: {'init': now, ...makers('initWith')},
    classOperations: {
      'date': now,
      'now': now,
      'distantPast': () => fromSeconds(-62135769600),
      'distantFuture': () => fromSeconds(64092211200),
      'timeIntervalSinceReferenceDate': () => seconds(now()) - reference,
      ...makers('dateWith'),
    },
    operations: {
      'timeIntervalSince1970'() { return seconds(this); },
      'timeIntervalSinceReferenceDate'() { return seconds(this) - reference; },
      'timeIntervalSinceNow'() { return seconds(this) - seconds(now()); },
      'timeIntervalSinceDate:'(other) {
        return seconds(this) - seconds(takeDate(other, 'timeIntervalSinceDate:'));
      },
      'dateByAddingTimeInterval:'(interval) {
        return fromSeconds(seconds(this) + takeNumber(interval, 'dateByAddingTimeInterval:'));
      },
      'addTimeInterval:'(interval) {
        return fromSeconds(seconds(this) + takeNumber(interval, 'addTimeInterval:'));
      },
      'compare:'(other) { return Math.sign(seconds(this) - seconds(takeDate(other, 'compare:'))); },
      'isEqualToDate:'(other) { return prelude.isEqual(this, other); },
      'earlierDate:'(other) { return takeDate(other, 'earlierDate:') < this ? other : this; },
      'laterDate:'(other) { return takeDate(other, 'laterDate:') > this ? other : this; },
    },
  });
  prelude.takeDate = takeDate;
})
