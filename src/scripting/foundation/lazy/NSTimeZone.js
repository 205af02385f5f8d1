(function (prelude) {
  'use strict';

  // By the name of a place, or by a fixed number of seconds.
  class TimeZone {
    constructor(name, seconds = null) { Object.assign(this, {place: name, seconds}); }
    // Seconds east of Greenwich at that time.
    offsetAt(date) {
      if (this.seconds !== null) return this.seconds;
      const parts = new Intl.DateTimeFormat('en-US', {
        timeZone: this.place, hourCycle: 'h23', year: 'numeric', month: 'numeric', day: 'numeric',
        hour: 'numeric', minute: 'numeric', second: 'numeric',
      }).formatToParts(date);
      const of = type => Number(parts.find(each => each.type === type).value);
      const local = Date.UTC(of('year'), of('month') - 1, of('day'), of('hour') % 24, of('minute'),
                             of('second'));
      return Math.round((local - Math.floor(date.getTime() / 1000) * 1000) / 1000);
    }
  }
  const isUtc = name => ['GMT', 'UTC'].includes(name);
  const named = name => {
    const text = prelude.takeString(name, 'timeZoneWithName:');
    if (isUtc(text)) return new TimeZone(text, 0);
    try {
      return new TimeZone(new Intl.DateTimeFormat('en-US', {timeZone: text})
          .resolvedOptions().timeZone);
    } catch {
      return null;
    }
  };
  const local = () => named(new Intl.DateTimeFormat().resolvedOptions().timeZone);
  const fixed = seconds => {
    const minutes = Math.abs(seconds) / 60;
    const two = number => String(Math.floor(number)).padStart(2, '0');
    const name = seconds === 0 ? 'GMT'
        : `GMT${seconds < 0 ? '-' : '+'}${two(minutes / 60)}${two(minutes % 60)}`;
    return new TimeZone(name, prelude.takeNumber(seconds, 'timeZoneForSecondsFromGMT:'));
  };
  return prelude.defineClass({
    name: 'NSTimeZone',
    implementation: TimeZone,
    initializers: {'initWithName:': named},
    classOperations: {
      'timeZoneWithName:': named,
      'timeZoneWithAbbreviation:': named,
      'timeZoneForSecondsFromGMT:': fixed,
      'localTimeZone': local,
      'systemTimeZone': local,
      'defaultTimeZone': local,
    },
    operations: {
      'name'() { return this.place; },
      'secondsFromGMT'() { return this.offsetAt(new Date()); },
      'secondsFromGMTForDate:'(date) {
        return this.offsetAt(prelude.takeDate(date, 'secondsFromGMTForDate:'));
      },
    },
    equals: (a, b) => a.place === b.place,
    copy: value => value,
  });
})
