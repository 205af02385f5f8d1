// A URL in parts, none of which is percent-encoded for scripts.
(function (prelude) {
  'use strict';

  const {takeString} = prelude;
  const pattern = new RegExp(/^(?:([^:/?#]+):)?/.source +
      /(?:\/\/(?:([^@/?#]*)@)?([^/?#:]*)(?::(\d+))?)?/.source +
      /([^?#]*)(?:\?([^#]*))?(?:#(.*))?$/.source);
  const decode = text => {
    try {
      return decodeURIComponent(text);
    } catch {
      return text;
    }
  };
  const decoded = text => text === undefined ? null : decode(text);
  const queryText = text => encodeURIComponent(text).replace(/%(2F|3A|40|3F|24|2C)/g, unescape);

  class URLComponents {
    constructor() {
      Object.assign(this, {parts: {scheme: null, user: null, host: null, port: null, path: '',
                                   fragment: null}, encodedQuery: null});
    }
    items() {
      if (this.encodedQuery === null) return null;
      const QueryItem = prelude.classNamed('NSURLQueryItem');
      return this.encodedQuery.split('&').map(each => {
        const [name, ...rest] = each.split('=');
        return QueryItem.queryItemWithName_value_(
            decode(name), rest.length > 0 ? decode(rest.join('=')) : null);
      });
    }
    text() {
      const {scheme, user, host, port, path, fragment} = this.parts;
      const at = host === null ? '' : `//${user === null ? '' : `${encodeURIComponent(user)}@`}` +
          host + (port === null ? '' : `:${port}`);
      return (scheme === null ? '' : `${scheme}:`) + at +
          path.split('/').map(each => encodeURI(each).replace(/[?#]/g, encodeURIComponent))
              .join('/') +
          (this.encodedQuery === null ? '' : `?${this.encodedQuery}`) +
          (fragment === null ? '' : `#${encodeURI(fragment)}`);
    }
  }
  function fromString(text) {
    const found = pattern.exec(takeString(text, 'componentsWithString:'));
    if (!found || /\s/.test(found[0])) return null;
    const [, scheme, user, host, port, path, query, fragment] = found;
    const made = new URLComponents();
    made.parts = {scheme: scheme ?? null, user: decoded(user), host: decoded(host),
                  port: port === undefined ? null : Number(port), path: decode(path),
                  fragment: decoded(fragment)};
    made.encodedQuery = query ?? null;
    return made;
  }
  const fromURL = url => fromString(url?.absoluteString?.());
  const slot = name => ({
    get() { return this.parts[name]; },
    set(value) {
      this.parts[name] = prelude.isNull(value) ? (name === 'path' ? '' : null)
          : name === 'port' ? prelude.takeNumber(value, name) : takeString(value, name);
    },
  });
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
      ...Object.fromEntries(['scheme', 'user', 'host', 'port', 'path', 'fragment'].map(
          name => [name, slot(name)])),
      query: {
        get() { return this.encodedQuery === null ? null : decode(this.encodedQuery); },
        set(text) { this.encodedQuery = prelude.isNull(text) ? null : encodeURI(text); },
      },
      percentEncodedQuery: {
        get() { return this.encodedQuery; },
        set(text) { this.encodedQuery = prelude.isNull(text) ? null : takeString(text, 'query'); },
      },
      queryItems: {
        get() { return this.items(); },
        set(items) {
          this.encodedQuery = prelude.isNull(items) ? null
              : prelude.takeList(items, 'setQueryItems:').map(each => each.value() === null
                  ? queryText(each.name()) : `${queryText(each.name())}=${queryText(each.value())}`)
                  .join('&');
        },
      },
    },
    operations: {
      'URL'() { return globalThis.NSURL.URLWithString_(this.text()); },
      'string'() { return this.text(); },
      'description'() { return this.text(); },
    },
  });
})
