// The calendar of the place, and what it divides a date into.
(function (prelude) {
  'use strict';

  // By the bit of each unit: the name, and how it is read from a date whose fields in UTC are the
  // local ones.
  const units = {
    4: ['year', date => date.getUTCFullYear()],
    8: ['month', date => date.getUTCMonth() + 1],
    16: ['day', date => date.getUTCDate()],
    32: ['hour', date => date.getUTCHours()],
    64: ['minute', date => date.getUTCMinutes()],
    128: ['second', date => date.getUTCSeconds()],
    512: ['weekday', date => date.getUTCDay() + 1],
    2048: ['quarter', date => Math.floor(date.getUTCMonth() / 3) + 1],
  };
  const names = Object.values(units).map(([name]) => name);
  const undefinedComponent = 0x7fffffffffffffff;

  // Date.UTC takes the years up to 99 for others.
  function timeOf(year, month, day, hour = 0, minute = 0, second = 0) {
    const at = new Date(0);
    at.setUTCFullYear(year, month - 1, day);
    return at.setUTCHours(hour, minute, second);
  }

  class DateComponents {
    constructor() { this.parts = {}; }
  }
  const slot = name => ({
    get() { return this.parts[name] ?? undefinedComponent; },
    set(value) { this.parts[name] = prelude.takeNumber(value, name); },
  });
  prelude.defineClass({
    name: 'NSDateComponents',
    implementation: DateComponents,
    properties: Object.fromEntries(names.map(name => [name, slot(name)])),
    equals: (a, b) => names.every(name => a.parts[name] === b.parts[name]),
    copy(value) {
      return Object.assign(new DateComponents(), {parts: {...value.parts}});
    },
  });

  class Calendar {
    constructor() { this.zone = null; }
    minutesAt(date) {
      return this.zone ? this.zone.offsetAt(date) / 60 : -date.getTimezoneOffset();
    }
    local(date) { return new Date(date.getTime() + this.minutesAt(date) * 60000); }
    fromLocal(time) {
      const guess = new Date(time - this.minutesAt(new Date(time)) * 60000);
      return new Date(time - this.minutesAt(guess) * 60000);
    }
    componentsOf(date, wanted) {
      const made = new DateComponents(), at = this.local(date);
      for (const [bit, [name, read]] of Object.entries(units)) {
        if (wanted & bit) made.parts[name] = read(at);
      }
      return made;
    }
    dayOf(date) { return Math.floor(this.local(date).getTime() / 86400000); }
    adding({year = 0, quarter = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0}, date) {
      const at = this.local(date);
      const target = new Date(at);
      // A month without that day ends earlier.
      target.setUTCDate(1);
      target.setUTCFullYear(at.getUTCFullYear() + year, at.getUTCMonth() + quarter * 3 + month);
      const last = new Date(timeOf(target.getUTCFullYear(), target.getUTCMonth() + 2, 0));
      target.setUTCDate(Math.min(at.getUTCDate(), last.getUTCDate()) + day);
      const moved = this.fromLocal(target.getTime());
      return new Date(moved.getTime() + ((hour * 60 + minute) * 60 + second) * 1000);
    }
  }
  // Whole units from one date to another, the largest first.
  function difference(calendar, wanted, from, to) {
    const made = new DateComponents();
    const sign = to < from ? -1 : 1;
    let at = from;
    for (const [bit, [name]] of Object.entries(units)) {
      if (!(wanted & bit) || Number(bit) > 128) continue;
      const step = count => calendar.adding({[name]: sign * count}, at);
      let low = 0, high = 1;
      const fits = count => (to - step(count)) * sign >= 0;
      while (fits(high)) [low, high] = [high, high * 2];
      while (high - low > 1) {
        const middle = Math.floor((low + high) / 2);
        if (fits(middle)) low = middle;
        else high = middle;
      }
      made.parts[name] = sign * low || 0;
      at = step(low);
    }
    return made;
  }
  const {takeDate, takeNumber} = prelude;
  const takeComponents = (value, selector) => {
    if (value instanceof DateComponents) return value.parts;
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes an NSDateComponents, not ${prelude.describeKind(value)}`);
  };
  const make = () => new Calendar();
  return prelude.defineClass({
    name: 'NSCalendar',
    implementation: Calendar,
    initializers: {'initWithCalendarIdentifier:': make},
    classOperations: {
      'currentCalendar': make,
      'autoupdatingCurrentCalendar': make,
      'calendarWithIdentifier:': make,
    },
    properties: {
      timeZone: {get() { return this.zone; }, set(zone) { this.zone = zone; }},
    },
    operations: {
      'components:fromDate:'(wanted, date) {
        return this.componentsOf(takeDate(date, 'components:fromDate:'), wanted);
      },
      'component:fromDate:'(unit, date) {
        const found = this.componentsOf(takeDate(date, 'component:fromDate:'), unit).parts;
        return Object.values(found)[0] ?? undefinedComponent;
      },
      'components:fromDate:toDate:options:'(wanted, from, to) {
        const selector = 'components:fromDate:toDate:options:';
        return difference(this, wanted, takeDate(from, selector), takeDate(to, selector));
      },
      'dateFromComponents:'(components) {
        const {year = 1, month = 1, day = 1, hour = 0, minute = 0, second = 0} =
            takeComponents(components, 'dateFromComponents:');
        return this.fromLocal(timeOf(year, month, day, hour, minute, second));
      },
      'dateByAddingComponents:toDate:options:'(components, date) {
        const selector = 'dateByAddingComponents:toDate:options:';
        return this.adding(takeComponents(components, selector), takeDate(date, selector));
      },
      'dateByAddingUnit:value:toDate:options:'(unit, value, date) {
        const selector = 'dateByAddingUnit:value:toDate:options:';
        const count = takeNumber(value, selector);
        const name = units[Number(unit)]?.[0];
        if (name === undefined || name === 'weekday') {
          throw prelude.exception('NSInvalidArgumentException',
                                  `${selector} takes a unit up to years, not ${unit}`);
        }
        return this.adding({[name]: count}, takeDate(date, selector));
      },
      'startOfDayForDate:'(date) {
        return this.fromLocal(this.dayOf(takeDate(date, 'startOfDayForDate:')) * 86400000);
      },
      'isDateInToday:'(date) {
        return this.dayOf(takeDate(date, 'isDateInToday:')) === this.dayOf(new Date());
      },
      'isDate:inSameDayAsDate:'(date, other) {
        const selector = 'isDate:inSameDayAsDate:';
        return this.dayOf(takeDate(date, selector)) === this.dayOf(takeDate(other, selector));
      },
    },
  });
})
