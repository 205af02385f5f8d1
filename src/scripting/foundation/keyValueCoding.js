// Values by key and by key path, with the operators of lists.
(function (prelude) {
  'use strict';

  const undefinedKey = (object, key) =>
      prelude.exception('NSUnknownKeyException',
                        `${prelude.describeKind(object)} has no value for the key ${key}`);

  const takeKey = (key, selector) => prelude.takeString(key, selector);

  // A property of a wrapper or of a script's own object, whether it is read by a call or not.
  function member(object, key) {
    if (prelude.isBoxed(object) || prelude.native.classNameOf(object)) {
      const value = object[key];
      return typeof value === 'function' ? value.call(object) : value;
    }
    if (!(key in Object(object))) throw undefinedKey(object, key);
    const value = object[key];
    return typeof value === 'function' ? value.call(object) : value;
  }

  function valueForKey(object, key) {
    if (object === null || object === undefined) return null;
    const name = takeKey(key, 'valueForKey:');
    if (Array.isArray(object)) {
      if (name.startsWith('@')) return operators[name.slice(1)]?.(object) ?? null;
      return object.map(each => valueForKey(each, name) ?? prelude.nullObject());
    }
    if (object instanceof Set) return new Set([...object].map(each => valueForKey(each, name)));
    if (prelude.isDictionary(object)) {
      if (Object.hasOwn(object, name)) return object[name];
      return name === '@count' ? Object.keys(object).length : null;
    }
    if (name === 'self') return object;
    return member(object, name) ?? null;
  }

  const numbers = values => values.map(each => each instanceof Date ? each : Number(each));
  const present = values => values.filter(each => !prelude.isNull(each));
  const least = (values, sign) => present(values).reduce(
      (best, each) => best === null || prelude.compare(each, best) * sign < 0 ? each : best, null);
  const distinct = values => {
    const found = [];
    const set = new Set();
    for (const each of values) {
      if (typeof each === 'object' ? found.some(other => prelude.isEqual(other, each))
                                   : set.has(each)) continue;
      set.add(each);
      found.push(each);
    }
    return found;
  };
  const operators = {
    count: values => values.length,
    sum: values => numbers(present(values)).reduce((sum, each) => sum + each, 0),
    avg: values => values.length > 0 ? operators.sum(values) / values.length : 0,
    max: values => least(values, -1),
    min: values => least(values, 1),
    unionOfObjects: values => present(values),
    distinctUnionOfObjects: values => distinct(present(values)),
    unionOfArrays: values => present(values).flat(),
    distinctUnionOfArrays: values => distinct(present(values).flat()),
  };

  function valueForKeyPath(object, path) {
    const keys = takeKey(path, 'valueForKeyPath:').split('.');
    for (let at = object, i = 0; ; at = valueForKey(at, keys[i++])) {
      if (i === keys.length || at === null || at === undefined) return at ?? null;
      if (!keys[i].startsWith('@') || !(Array.isArray(at) || at instanceof Set)) continue;
      const operator = operators[keys[i].slice(1)];
      if (!operator) throw undefinedKey(at, keys[i]);
      const rest = keys.slice(i + 1).join('.');
      const list = [...at];
      return operator(rest ? list.map(each => valueForKeyPath(each, rest)) : list);
    }
  }

  function setValueForKey(object, value, key) {
    if (object === null || object === undefined) return;
    const name = takeKey(key, 'setValue:forKey:');
    if (Array.isArray(object) || object instanceof Set) {
      for (const each of object) setValueForKey(each, value, name);
    } else if (prelude.isDictionary(object)) {
      prelude.setEntry(object, name, value);
    } else if (typeof object === 'object' && name in object || prelude.native.classNameOf(object)) {
      object[name] = value;
    } else {
      throw undefinedKey(object, name);
    }
  }

  prelude.valueForKey = valueForKey;
  prelude.valueForKeyPath = valueForKeyPath;
  prelude.setValueForKey = setValueForKey;
  prelude.setValueForKeyPath = (object, value, path) => {
    const keys = takeKey(path, 'setValue:forKeyPath:').split('.');
    const last = keys.pop();
    const owner = keys.length > 0 ? valueForKeyPath(object, keys.join('.')) : object;
    setValueForKey(owner, value, last);
  };
  prelude.isNull = value =>
      value === null || value === undefined || value === prelude.nullObject();
  prelude.distinct = distinct;
  // As `compare:` does: -1, 0 or 1; nil is before everything.
  prelude.compare = (a, b) => {
    if (prelude.isNull(a) || prelude.isNull(b)) {
      return Number(prelude.isNull(b)) - Number(prelude.isNull(a));
    }
    if (prelude.isString(a) && prelude.isString(b)) {
      return String(a) < String(b) ? -1 : String(a) > String(b) ? 1 : 0;
    }
    const [one, other] = [a, b].map(each => each instanceof Date ? each.getTime() : each);
    if (typeof one === 'object' || typeof other === 'object' || typeof one === 'string' ||
        typeof other === 'string') {
      throw prelude.exception('NSInvalidArgumentException',
          `${prelude.describeKind(a)} cannot be compared with ${prelude.describeKind(b)}`);
    }
    return one < other ? -1 : one > other ? 1 : 0;
  };
})
