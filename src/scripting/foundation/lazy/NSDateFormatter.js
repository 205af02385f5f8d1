(function (prelude) {
  'use strict';

  const monthNames = ['January', 'February', 'March', 'April', 'May', 'June', 'July', 'August',
                      'September', 'October', 'November', 'December'];
  const dayNames = ['Sunday', 'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday', 'Saturday'];

  // Minutes east of Greenwich at that time.
  const offsetAt = (date, zone) => zone ? zone.offsetAt(date) / 60 : -date.getTimezoneOffset();
  // The date's fields in the zone, readable as if they were UTC.
  const local = (date, zone) => new Date(date.getTime() + offsetAt(date, zone) * 60000);
  const zoneText = (minutes, separator, zero) => {
    if (minutes === 0 && zero) return zero;
    const two = number => String(Math.floor(number)).padStart(2, '0');
    return (minutes < 0 ? '-' : '+') + two(Math.abs(minutes) / 60) + separator +
        two(Math.abs(minutes) % 60);
  };
  const dayOfYear = date =>
      Math.round((Date.UTC(date.getUTCFullYear(), date.getUTCMonth(), date.getUTCDate()) -
                  Date.UTC(date.getUTCFullYear(), 0, 1)) / 86400000) + 1;
  // By ISO 8601, which starts a week on Monday.
  function weekOf(date) {
    const thursday = new Date(date.getTime() + (3 - (date.getUTCDay() + 6) % 7) * 86400000);
    return {week: Math.floor((dayOfYear(thursday) - 1) / 7) + 1, year: thursday.getUTCFullYear()};
  }
  const numeric = (number, count) => String(number).padStart(count, '0');
  const named = (names, index, count) =>
      count === 5 ? names[index][0] : count === 4 ? names[index] : names[index].slice(0, 3);
  const year = (number, count) => count === 2 ? numeric(number % 100, 2) : numeric(number, count);

  // How each letter of a format is written; `minutes` is the zone's offset.
  const fields = {
    y: (date, count) => year(date.getUTCFullYear(), count),
    u: (date, count) => numeric(date.getUTCFullYear(), count),
    Y: (date, count) => year(weekOf(date).year, count),
    G: date => date.getUTCFullYear() > 0 ? 'AD' : 'BC',
    Q: (date, count) => (count === 3 ? 'Q' : '') +
        numeric(Math.floor(date.getUTCMonth() / 3) + 1, count === 3 ? 1 : count),
    M: (date, count) => count < 3 ? numeric(date.getUTCMonth() + 1, count)
                                  : named(monthNames, date.getUTCMonth(), count),
    w: (date, count) => numeric(weekOf(date).week, count),
    d: (date, count) => numeric(date.getUTCDate(), count),
    D: (date, count) => numeric(dayOfYear(date), count),
    E: (date, count) => named(dayNames, date.getUTCDay(), Math.max(count, 3)),
    e: (date, count) => count < 3 ? numeric(date.getUTCDay() + 1, count)
                                  : named(dayNames, date.getUTCDay(), count),
    a: date => date.getUTCHours() < 12 ? 'AM' : 'PM',
    H: (date, count) => numeric(date.getUTCHours(), count),
    k: (date, count) => numeric(date.getUTCHours() || 24, count),
    h: (date, count) => numeric(date.getUTCHours() % 12 || 12, count),
    K: (date, count) => numeric(date.getUTCHours() % 12, count),
    m: (date, count) => numeric(date.getUTCMinutes(), count),
    s: (date, count) => numeric(date.getUTCSeconds(), count),
    S: (date, count) => numeric(date.getUTCMilliseconds(), 3).padEnd(count, '0').slice(0, count),
    Z: (date, count, minutes) => count < 4 ? zoneText(minutes, '')
        : count === 4 ? `GMT${zoneText(minutes, ':')}` : zoneText(minutes, ':', 'Z'),
    X: (date, count, minutes) => zoneText(minutes, count === 2 || count === 1 ? '' : ':', 'Z'),
    x: (date, count, minutes) => zoneText(minutes, count === 2 ? '' : ':'),
    z: (date, count, minutes) => minutes === 0 ? 'GMT' : `GMT${zoneText(minutes, ':')}`,
  };
  Object.assign(fields, {L: fields.M, c: fields.e, q: fields.Q});

  // Runs of one letter, quoted text, and everything else.
  const parts = /'((?:[^']|'')*)'|(([A-Za-z])\3*)|([^A-Za-z']+)/g;
  function* partsOf(format) {
    for (const [whole, quoted, run, letter, other] of format.matchAll(parts)) {
      if (run === undefined) {
        yield {text: other ?? (whole === "''" ? "'" : quoted.replaceAll("''", "'"))};
      } else if (letter in fields) {
        yield {letter, count: run.length};
      } else {
        throw prelude.exception('NSInvalidArgumentException',
                                `the date format's ${run} is not supported`);
      }
    }
  }
  const write = (format, date, zone) => {
    const at = local(date, zone), minutes = offsetAt(date, zone);
    return [...partsOf(format)].map(({text, letter, count}) =>
        text ?? fields[letter](at, count, minutes)).join('');
  };

  const namePattern = names => names.flatMap(each => [each, each.slice(0, 3)]).join('|');
  const monthAt = text => monthNames.findIndex(
      each => each.slice(0, 3).toLowerCase() === text.slice(0, 3).toLowerCase());
  const zonePattern = 'Z|GMT|UTC|(?:GMT|UTC)?[-+]\\d\\d:?\\d\\d';
  const minutesIn = text => {
    const found = /([-+])(\d\d):?(\d\d)/.exec(text);
    return found ? (found[1] === '-' ? -1 : 1) * (found[2] * 60 + Number(found[3])) : 0;
  };
  // How each letter is read into the fields of a date.
  const readers = {
    y: [count => count === 2 ? '\\d{2}' : '\\d{1,4}', (to, text, count) => {
      to.year = Number(text) + (count === 2 ? (text < 50 ? 2000 : 1900) : 0);
    }],
    M: [count => count < 3 ? '\\d{1,2}' : namePattern(monthNames), (to, text, count) => {
      to.month = count < 3 ? text - 1 : monthAt(text);
    }],
    d: [() => '\\d{1,2}', (to, text) => { to.day = Number(text); }],
    E: [() => namePattern(dayNames), () => {}],
    a: [() => 'AM|PM', (to, text) => { to.isAfternoon = text.toUpperCase() === 'PM'; }],
    H: [() => '\\d{1,2}', (to, text) => { to.hour = Number(text); }],
    h: [() => '\\d{1,2}', (to, text) => { to.hour = text % 12; }],
    m: [() => '\\d{1,2}', (to, text) => { to.minute = Number(text); }],
    s: [() => '\\d{1,2}', (to, text) => { to.second = Number(text); }],
    S: [count => `\\d{${count}}`, (to, text) => { to.millisecond = Number(`0.${text}`) * 1000; }],
    Z: [() => zonePattern, (to, text) => { to.minutes = minutesIn(text); }],
  };
  Object.assign(readers, {L: readers.M, X: readers.Z, x: readers.Z, z: readers.Z, u: readers.y,
                          k: readers.H, K: readers.h});
  const escape = text => text.replace(/[\\^$.*+?()[\]{}|/-]/g, '\\$&');

  function isPossible({year: y, month, day, hour, minute, second}) {
    const date = new Date(Date.UTC(y, month, day));
    return date.getUTCMonth() === month && date.getUTCDate() === day && hour < 24 &&
        minute < 60 && second < 61;
  }
  function read(format, text, zone) {
    const all = [...partsOf(format)];
    const pattern = all.map(({text: literal, letter, count}) => {
      if (literal !== undefined) return escape(literal);
      if (letter in readers) return `(${readers[letter][0](count)})`;
      throw prelude.exception('NSInvalidArgumentException',
                              `the date format's ${letter} can be written but not read`);
    }).join('');
    const found = new RegExp(`^${pattern}$`, 'i').exec(text);
    if (!found) return null;
    const to = {year: 2000, month: 0, day: 1, hour: 0, minute: 0, second: 0, millisecond: 0};
    all.filter(each => each.letter).forEach(({letter, count}, i) => {
      readers[letter][1](to, found[i + 1], count);
    });
    if (to.isAfternoon) to.hour += 12;
    if (!isPossible(to)) return null;
    const time = Date.UTC(to.year, to.month, to.day, to.hour, to.minute, to.second, to.millisecond);
    if (to.minutes !== undefined) return new Date(time - to.minutes * 60000);
    const guess = new Date(time - offsetAt(new Date(time), zone) * 60000);
    return new Date(time - offsetAt(guess, zone) * 60000);
  }

  // By style: none, short, medium, long, full.
  const dateStyles = ['', 'M/d/yy', 'MMM d, y', 'MMMM d, y', 'EEEE, MMMM d, y'];
  const timeStyles = ['', 'h:mm a', 'h:mm:ss a', 'h:mm:ss a z', 'h:mm:ss a zzzz'];

  class DateFormatter {
    constructor() {
      Object.assign(this, {format: null, dates: 0, times: 0, zone: null, place: null});
    }
    pattern() {
      return this.format ?? [dateStyles[this.dates], timeStyles[this.times]].filter(Boolean)
          .join(this.dates > 2 ? ' at ' : ', ').replace(' at ', " 'at' ");
    }
    write(date) {
      return write(this.pattern(), prelude.takeDate(date, 'stringFromDate:'), this.zone);
    }
  }
  const slot = (name, convert = value => value) => ({
    get() { return this[name]; },
    set(value) { this[name] = convert(value); },
  });
  return prelude.defineClass({
    name: 'NSDateFormatter',
    implementation: DateFormatter,
    classOperations: {
      'localizedStringFromDate:dateStyle:timeStyle:'(date, dates, times) {
        return Object.assign(new DateFormatter(), {dates, times}).write(date);
      },
      'dateFormatFromTemplate:options:locale:': template => String(template),
    },
    properties: {
      dateFormat: {
        get() { return this.pattern(); },
        set(format) { this.format = prelude.takeString(format, 'setDateFormat:'); },
      },
      dateStyle: slot('dates', Number),
      timeStyle: slot('times', Number),
      timeZone: slot('zone'),
      locale: slot('place'),
    },
    operations: {
      'stringFromDate:'(date) { return this.write(date); },
      'dateFromString:'(text) {
        return read(this.pattern(), prelude.takeString(text, 'dateFromString:'), this.zone);
      },
    },
  });
})
