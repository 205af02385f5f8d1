// A string as a path.
(function (prelude) {
  'use strict';

  const {takeString, takeList} = prelude;
  const clean = path => {
    const single = path.replace(/\/{2,}/g, '/');
    return single.length > 1 && single.endsWith('/') ? single.slice(0, -1) : single;
  };
  const components = path => {
    const parts = path.split('/').filter(each => each !== '');
    if (path.startsWith('/')) parts.unshift('/');
    if (path.length > 1 && path.endsWith('/') && parts.length > 1) parts.push('/');
    return parts;
  };
  const last = path => clean(path) === '/' ? '/' : clean(path).split('/').at(-1);
  const extension = path => {
    const name = last(path), dot = name.lastIndexOf('.');
    return dot > 0 && dot < name.length - 1 ? name.slice(dot + 1) : '';
  };
  const append = (path, part) => clean(path === '' ? part : `${path}/${part}`);
  const parent = path => {
    const whole = clean(path), slash = whole.lastIndexOf('/');
    return slash < 0 ? '' : slash === 0 ? '/' : whole.slice(0, slash);
  };
  const withoutExtension = path => {
    const whole = clean(path), found = extension(whole);
    return found === '' ? whole : whole.slice(0, -found.length - 1);
  };
  const home = () => prelude.native.homeDirectory();
  const expand = path => path === '~' || path.startsWith('~/') ? home() + path.slice(1) : path;

  // Resolves "." and "..".
  function standardize(path) {
    const parts = [];
    const whole = expand(path), isAbsolute = whole.startsWith('/');
    for (const part of whole.split('/')) {
      if (part === '..' && parts.length > 0 && parts.at(-1) !== '..') parts.pop();
      else if (part === '..' && isAbsolute) continue;
      else if (part !== '' && part !== '.') parts.push(part);
    }
    return (isAbsolute ? '/' : '') + parts.join('/');
  }

  const escapes = {
    '\n': '%0A', '\r': '%0D',
  };
  const encoded = (text, isAllowed) => {
    let found = '';
    for (const character of text) {
      if (isAllowed(character)) {
        found += character;
      } else if (/[\ud800-\udfff]/.test(character) && character.length === 1) {
        return null;
      } else {
        found += escapes[character] ?? encodeURIComponent(character).replace(
            /^[^%]$/, each => `%${each.charCodeAt(0).toString(16).toUpperCase()}`);
      }
    }
    return found;
  };
  const decoded = text => {
    try {
      return decodeURIComponent(text);
    } catch {
      return null;
    }
  };

  prelude.joinPath = parts => clean(parts.map(each =>
      takeString(each, 'pathWithComponents:')).join('/'));
  prelude.expandPath = expand;
  prelude.standardizePath = standardize;
  prelude.extendClass('NSString', {
    'pathComponents'() { return components(String(this)); },
    'lastPathComponent'() { return last(String(this)); },
    'pathExtension'() { return extension(String(this)); },
    'isAbsolutePath'() { return /^[/~]/.test(this); },
    'stringByDeletingLastPathComponent'() { return parent(String(this)); },
    'stringByDeletingPathExtension'() { return withoutExtension(String(this)); },
    'stringByAppendingPathComponent:'(part) {
      return append(String(this), takeString(part, 'stringByAppendingPathComponent:'));
    },
    'stringByAppendingPathExtension:'(part) {
      return `${clean(String(this))}.${takeString(part, 'stringByAppendingPathExtension:')}`;
    },
    'stringsByAppendingPaths:'(parts) {
      return takeList(parts, 'stringsByAppendingPaths:').map(each => append(String(this), each));
    },
    'stringByExpandingTildeInPath'() { return clean(expand(String(this))); },
    'stringByAbbreviatingWithTildeInPath'() {
      const path = clean(String(this)), at = home();
      return path === at || path.startsWith(at + '/') ? '~' + path.slice(at.length) : path;
    },
    'stringByStandardizingPath'() { return standardize(String(this)); },
    'stringByResolvingSymlinksInPath'() {
      return prelude.native.resolvedPath(standardize(String(this)));
    },
    'stringByAddingPercentEncodingWithAllowedCharacters:'(set) {
      if (!prelude.isInstance(set, prelude.classNamed('NSCharacterSet'))) {
        throw prelude.exception('NSInvalidArgumentException',
            'stringByAddingPercentEncodingWithAllowedCharacters: takes a character set');
      }
      return encoded(String(this), each => each.charCodeAt(0) < 128 && set.has(each));
    },
    'stringByAddingPercentEscapesUsingEncoding:'() {
      return encoded(String(this), each => /[\w\-.!~*'();:@&=+$,/?]/.test(each));
    },
    'stringByRemovingPercentEncoding'() { return decoded(String(this)); },
    'stringByReplacingPercentEscapesUsingEncoding:'() { return decoded(String(this)); },
  });
})
