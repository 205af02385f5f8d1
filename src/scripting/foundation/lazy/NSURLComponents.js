// A URL in parts. They are kept as they are in the URL, percent-encoded, and decoded for scripts.
(function (prelude) {
  'use strict';

  const {takeString} = prelude;
  const invalid = message => prelude.exception('NSInvalidArgumentException', message);
  const pattern = new RegExp(/^(?:([^:/?#]+):)?/.source +
      /(?:\/\/(?:([^@:/?#]*)(?::([^@/?#]*))?@)?(\[[^\]/?#]*\]|[^/?#:]*)(?::(\d*))?)?/.source +
      /([^?#]*)(?:\?([^#]*))?(?:#(.*))?$/.source);
  const decode = text => {
    try {
      return decodeURIComponent(text);
    } catch {
      return text;
    }
  };
  const decoded = text => text === null ? null : decode(text);

  // What is not encoded in each part.
  const unreserved = String.raw`A-Za-z0-9\-._~!$'()*,`, all = unreserved + '&+;=';
  const encoder = allowed => {
    const others = new RegExp(`[^${allowed}]`, 'gu');
    return (text, what) => {
      try {
        return text.replace(others, encodeURIComponent);
      } catch {
        throw invalid(`${what} takes text that is valid Unicode`);
      }
    };
  };
  const encoders = {
    user: encoder(all), password: encoder(all), path: encoder(all + ':@/'),
    query: encoder(all + ':@/?'), fragment: encoder(all + ':@/?'),
    host: encoder(all + String.raw`:\[\]`),
    scheme(text) {
      if (/^[a-z][a-z0-9+.-]*$/i.test(text)) return text;
      throw invalid(`"${text}" cannot be the scheme of a URL`);
    },
  };
  const itemText = encoder(unreserved + ':@/?');
  const names = ['scheme', 'user', 'password', 'host', 'port', 'path', 'query', 'fragment'];

  class URLComponents {
    constructor() {
      this.parts = {...Object.fromEntries(names.map(name => [name, null])), path: ''};
    }
    items() {
      const {query} = this.parts;
      if (query === null) return null;
      const QueryItem = prelude.classNamed('NSURLQueryItem');
      return query.split('&').map(each => {
        const [name, ...rest] = each.split('=');
        return QueryItem.queryItemWithName_value_(
            decode(name), rest.length > 0 ? decode(rest.join('=')) : null);
      });
    }
    // Null if the parts are none of a URL together.
    text() {
      const {scheme, user, password, host, port, path, query, fragment} = this.parts;
      const hasServer = [user, password, host, port].some(each => each !== null);
      if (hasServer ? path !== '' && !path.startsWith('/') : path.startsWith('//')) return null;
      const after = (sign, part) => part === null ? '' : sign + part;
      const login = user === null && password === null
          ? '' : `${user ?? ''}${after(':', password)}@`;
      return (scheme === null ? '' : `${scheme}:`) +
          (hasServer ? `//${login}${host ?? ''}${after(':', port)}` : '') + path +
          after('?', query) + after('#', fragment);
    }
  }
  function fromString(text) {
    const found = pattern.exec(takeString(text, 'componentsWithString:'));
    if (!found || /\s/.test(found[0])) return null;
    const made = new URLComponents();
    names.forEach((name, i) => { made.parts[name] = found[i + 1] ?? null; });
    const {port} = made.parts;
    made.parts.port = port ? Number(port) : null;
    return made;
  }
  const fromURL = url => fromString(url?.absoluteString?.());
  function takePort(value) {
    const port = prelude.takeNumber(value, 'port');
    if (Number.isInteger(port) && port >= 0 && port <= 65535) return port;
    throw invalid(`port takes a whole number up to 65535, not ${port}`);
  }
  function takeEncoded(value) {
    const text = takeString(value, 'percentEncodedQuery');
    if (/^(?:[^\s#%]|%[0-9a-f]{2})*$/i.test(text)) return text;
    throw invalid(`"${text}" is no percent-encoded query`);
  }
  function textOfItems(items) {
    prelude.classNamed('NSURLQueryItem');
    return prelude.takeList(items, 'setQueryItems:').map(each => {
      if (!prelude.isQueryItem(each)) {
        throw invalid(`setQueryItems: takes a list of NSURLQueryItem, not of ${
            prelude.describeKind(each)}`);
      }
      const [name, value] = [each.name(), each.value()];
      return itemText(name, 'setQueryItems:') +
          (value === null ? '' : `=${itemText(value, 'setQueryItems:')}`);
    }).join('&');
  }
  const slot = (name, get, take) => ({
    get() { return get(this.parts[name]); },
    set(value) {
      this.parts[name] = prelude.isNull(value) ? (name === 'path' ? '' : null) : take(value);
    },
  });
  const same = value => value;
  const texts = Object.entries(encoders).map(([name, encode]) => [
    name, slot(name, decoded, value => encode(takeString(value, name), name))]);
  return prelude.defineClass({
    name: 'NSURLComponents',
    implementation: URLComponents,
    initializers: {
      'init': () => new URLComponents(),
      'initWithString:': fromString,
      'initWithURL:resolvingAgainstBaseURL:': fromURL,
    },
    classOperations: {
      'componentsWithString:': fromString,
      'componentsWithURL:resolvingAgainstBaseURL:': fromURL,
    },
    properties: {
      ...Object.fromEntries(texts),
      port: slot('port', same, takePort),
      percentEncodedQuery: slot('query', same, takeEncoded),
      queryItems: {
        get() { return this.items(); },
        set(items) { this.parts.query = prelude.isNull(items) ? null : textOfItems(items); },
      },
    },
    operations: {
      'URL'() {
        const text = this.text();
        return text === null ? null : globalThis.NSURL.URLWithString_(text);
      },
      'string'() { return this.text(); },
      'description'() { return this.text() ?? ''; },
    },
  });
})
