// The clipboard. One with another name is the script's own.
(function (prelude) {
  'use strict';

  const {native} = prelude;
  const formats = {
    'public.utf8-plain-text': 'text/plain', 'NSStringPboardType': 'text/plain',
    'public.html': 'text/html', 'public.png': 'image/png', 'public.url': 'text/uri-list',
  };
  const formatOf = (type, selector) => {
    const text = prelude.takeString(type, selector);
    return formats[text] ?? text;
  };
  // Null for a format that another program has put there and no constant names.
  const typeOf = format => Object.keys(formats).find(each => formats[each] === format) ?? format;

  class Pasteboard {
    constructor(title) {
      Object.assign(this, {title, own: prelude.newDictionary(), changes: 0});
    }
    get contents() {
      return this.title === null ? native.clipboardContents() : this.own;
    }
    replace(contents) {
      ++this.changes;
      if (this.title === null) native.setClipboardContents(contents);
      else this.own = contents;
    }
    put(bytes, type, selector) {
      const contents = this.contents;
      contents[formatOf(type, selector)] = bytes;
      this.replace(contents);
      return true;
    }
    bytes(type, selector) { return this.contents[formatOf(type, selector)] ?? null; }
    clear() { this.replace(prelude.newDictionary()); }
  }

  const general = new Pasteboard(null);
  const named = new Map();
  const utf8 = 4;
  return prelude.defineClass({
    name: 'NSPasteboard',
    implementation: Pasteboard,
    initializers: {},
    classOperations: {
      'generalPasteboard': () => general,
      'pasteboardWithName:'(name) {
        const text = prelude.takeString(name, 'pasteboardWithName:');
        if (!named.has(text)) named.set(text, new Pasteboard(text));
        return named.get(text);
      },
    },
    operations: {
      'clearContents'() { this.clear(); return this.changes; },
      'declareTypes:owner:'(types) {
        prelude.takeList(types, 'declareTypes:owner:');
        this.clear();
        return this.changes;
      },
      'setString:forType:'(text, type) {
        const bytes = prelude.encodeText(prelude.takeString(text, 'setString:forType:'), utf8);
        return this.put(bytes, type, 'setString:forType:');
      },
      'stringForType:'(type) {
        return prelude.decodeText(this.bytes(type, 'stringForType:'), utf8);
      },
      'setData:forType:'(data, type) {
        if (data instanceof Uint8Array) return this.put(data, type, 'setData:forType:');
        throw prelude.exception('NSInvalidArgumentException',
            `setData:forType: takes bytes, not ${prelude.describeKind(data)}`);
      },
      'dataForType:'(type) { return this.bytes(type, 'dataForType:'); },
      'writeObjects:'(objects) {
        const text = prelude.takeList(objects, 'writeObjects:')
            .map(each => prelude.takeString(each, 'writeObjects:')).join('\n');
        return this.put(prelude.encodeText(text, utf8), 'public.utf8-plain-text', 'writeObjects:');
      },
      'readObjectsForClasses:options:'(classes) {
        const wanted = prelude.takeList(classes, 'readObjectsForClasses:options:');
        const text = prelude.decodeText(this.bytes('public.utf8-plain-text', 'types'), utf8);
        const isWanted = wanted.some(each => prelude.nameOfClass(each) === 'NSString');
        return isWanted && text !== null ? [text] : [];
      },
      'types'() { return Object.keys(this.contents).map(typeOf); },
      'availableTypeFromArray:'(types) {
        const contents = this.contents;
        return prelude.takeList(types, 'availableTypeFromArray:').find(
            each => formatOf(each, 'availableTypeFromArray:') in contents) ?? null;
      },
      'changeCount'() { return this.changes; },
    },
  });
})
