(function (prelude) {
  'use strict';

  const {native, takeString} = prelude;
  // A folder with an Info.plist and resources. That of the host application is known as far as the
  // document tells about it.
  class Bundle {
    constructor(folder) { this.folder = folder; }
    information() {
      if (this.folder === null) return native.hostInformation();
      const found = ['Contents/Info.plist', 'Info.plist'].map(each =>
          native.readPropertyList(`${this.folder}/${each}`)).find(prelude.isDictionary);
      return found ?? prelude.newDictionary();
    }
    path() { return this.folder ?? native.system().programFolder; }
    resources() {
      const inside = `${this.path()}/Contents/Resources`;
      return native.isFolder(inside) ? inside : this.path();
    }
    find(name, extension) {
      const suffix = prelude.isNull(extension) || String(extension) === '' ? '' : `.${extension}`;
      const file = `${this.resources()}/${takeString(name, 'pathForResource:ofType:')}${suffix}`;
      return native.fileExists(file) ? file : null;
    }
  }
  const shared = new Bundle(null);
  const at = selector => path => {
    const folder = prelude.expandPath(takeString(path, selector)).replace(/(.)\/+$/, '$1');
    return native.isFolder(folder) ? new Bundle(folder) : null;
  };
  const atURL = selector => url => at(selector)(prelude.pathOfFileURL(url, selector));
  const urlOf = path => path === null ? null : globalThis.NSURL.fileURLWithPath_(path);
  return prelude.defineClass({
    name: 'NSBundle',
    implementation: Bundle,
    initializers: {'initWithPath:': at('initWithPath:'), 'initWithURL:': atURL('initWithURL:')},
    classOperations: {
      'mainBundle': () => shared,
      'bundleWithPath:': at('bundleWithPath:'),
      'bundleWithURL:': atURL('bundleWithURL:'),
    },
    operations: {
      'infoDictionary'() { return this.information(); },
      'objectForInfoDictionaryKey:'(key) { return this.information()[String(key)] ?? null; },
      'bundleIdentifier'() { return this.information().CFBundleIdentifier ?? null; },
      'bundlePath'() { return this.path(); },
      'bundleURL'() { return urlOf(this.path()); },
      'resourcePath'() { return this.resources(); },
      'resourceURL'() { return urlOf(this.resources()); },
      'pathForResource:ofType:'(name, extension) { return this.find(name, extension); },
      'URLForResource:withExtension:'(name, extension) {
        return urlOf(this.find(name, extension));
      },
    },
  });
})
