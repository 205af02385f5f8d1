// Asks for the path of a file. NSOpenPanel derives from it.
(function (prelude) {
  'use strict';

  const {native} = prelude;
  const invalid = message => prelude.exception('NSInvalidArgumentException', message);
  const slot = (name, convert) => ({
    get() { return this[name]; },
    set(value) { this[name] = prelude.isNull(value) ? null : convert(value); },
  });
  const flag = name => slot(name, Boolean);
  const types = name => slot(name, list => prelude.takeList(list, 'setAllowedFileTypes:')
      .map(each => String(each).replace(/^\./, '')));

  class SavePanel {
    constructor() {
      Object.assign(this, {text: null, heading: null, label: null, fieldLabel: null});
      Object.assign(this, {name: null, folder: null, extensions: null, paths: []});
      Object.assign(this, {createsFolders: true, allowsOthers: false, view: null});
      Object.assign(this, {showsHidden: false, hidesExtension: false});
    }
    question() { return this.text || this.heading || 'Save as'; }
    inFolder(name) {
      const folder = this.folder ? prelude.pathOfFileURL(this.folder, 'directoryURL') : '';
      return folder ? `${folder.replace(/\/$/, '')}/${name}` : name;
    }
    ask(initial) {
      const answer = native.askUser(String(this.question()), [], initial, '', false);
      return answer === '' ? null : native.absolutePath(prelude.expandPath(answer));
    }
    fits(path) {
      const extension = path.pathExtension().toLowerCase();
      return !this.extensions?.length ||
          this.extensions.some(each => each.toLowerCase() === extension);
    }
    choose() {
      const path = this.ask(this.name ? this.inFolder(this.name) : null);
      if (path === null) return [];
      return [this.fits(path) || this.allowsOthers ? path : `${path}.${this.extensions[0]}`];
    }
    run() {
      this.paths = this.choose();
      if (this.paths.length > 0 && this.view) native.askFields([this.view]);
      return this.paths.length > 0 ? globalThis.NSModalResponseOK
                                   : globalThis.NSModalResponseCancel;
    }
    urls() {
      return this.paths.map(each => native.classNamed('NSURL').fileURLWithPath_(each));
    }
  }

  class OpenPanel extends SavePanel {
    constructor() {
      super();
      Object.assign(this, {files: true, folders: false, many: false, resolves: true});
    }
    question() {
      return this.text || this.heading || (this.files ? 'Open which file' : 'Open which folder');
    }
    check(path) {
      if (!native.fileExists(path)) throw invalid(`there is no file ${path} to open`);
      if (native.isFolder(path)) {
        if (!this.folders && !this.fits(path)) throw invalid(`${path} is a folder`);
      } else if (!this.files) {
        throw invalid(`${path} is not a folder`);
      } else if (!this.fits(path)) {
        throw invalid(`${path} is none of ${this.extensions.join(', ')}`);
      }
      return path;
    }
    choose() {
      const paths = [];
      do {
        const path = this.ask(null);
        if (path === null) break;
        paths.push(this.check(path));
      } while (this.many);
      return paths;
    }
  }

  const panelOperations = {
    'runModal'() { return this.run(); },
    'runModalForDirectory:file:'(folder, name) {
      if (!prelude.isNull(folder)) this.folder = String(folder);
      if (!prelude.isNull(name)) this.name = String(name);
      return this.run();
    },
    'beginWithCompletionHandler:'(handler) {
      prelude.takeFunction(handler, 'beginWithCompletionHandler:')(this.run());
    },
    'beginSheetModalForWindow:completionHandler:'(_, handler) {
      prelude.takeFunction(handler, 'completionHandler')(this.run());
    },
    'URL'() { return this.urls()[0] ?? null; },
    'filename'() { return this.paths[0] ?? null; },
  };
  prelude.classNamed('NSAlert');
  const base = prelude.defineClass({
    name: 'NSSavePanel',
    implementation: SavePanel,
    classOperations: {'savePanel': () => new SavePanel()},
    properties: {
      message: slot('text', String),
      title: slot('heading', String),
      prompt: slot('label', String),
      nameFieldLabel: slot('fieldLabel', String),
      nameFieldStringValue: slot('name', String),
      directoryURL: slot('folder', url => url),
      allowedFileTypes: types('extensions'),
      allowsOtherFileTypes: flag('allowsOthers'),
      canCreateDirectories: flag('createsFolders'),
      showsHiddenFiles: flag('showsHidden'),
      extensionHidden: flag('hidesExtension'),
      accessoryView: slot('view', view => prelude.takeView(view, 'setAccessoryView:')),
    },
    operations: panelOperations,
  });
  prelude.defineClass({
    name: 'NSOpenPanel',
    base,
    implementation: OpenPanel,
    classOperations: {'openPanel': () => new OpenPanel()},
    properties: {
      canChooseFiles: flag('files'),
      canChooseDirectories: flag('folders'),
      allowsMultipleSelection: flag('many'),
      resolvesAliases: flag('resolves'),
    },
    operations: {
      'URLs'() { return this.urls(); },
      'filenames'() { return [...this.paths]; },
    },
  });
  return base;
})
