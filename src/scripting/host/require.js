// CommonJS: files that are evaluated once and give what they export.
(function (prelude) {
  'use strict';

  // By canonical path.
  const modules = new Map();
  const folderOf = path => path.slice(0, Math.max(path.lastIndexOf('/'), 0)) || '/';

  function missing(name) {
    const why = /^sketch(\/|$)/.test(name)
        ? 'the JavaScript API of newer versions of Sketch is not there, only its classes; see ' +
          'docs/scripting-host.md'
        : `files are named by relative path, as in require("./${name}")`;
    return Object.assign(new Error(`there is no module "${name}": ${why}`),
                         {code: 'MODULE_NOT_FOUND'});
  }
  function find(name, folder) {
    if (!prelude.isString(name) || name.length === 0) {
      throw new TypeError(`require takes a path, not ${
          name === '' ? 'an empty one' : prelude.describeKind(name)}`);
    }
    const path = String(name);
    if (!/^(\.{0,2}\/|\.{1,2}$)/.test(path)) throw missing(path);
    const found = prelude.native.findModule(folder, path);
    if (found) return found;
    throw Object.assign(new Error(`there is no module "${path}" in ${folder}`),
                        {code: 'MODULE_NOT_FOUND'});
  }

  function parse(text, path) {
    try {
      return JSON.parse(text);
    } catch (error) {
      throw new SyntaxError(`${path} is not valid JSON: ${error.message}`);
    }
  }
  function evaluate(module, file) {
    const text = prelude.native.readScript(file.path);
    if (/\.json$/i.test(file.path)) {
      module.exports = parse(text, file.path);
      return;
    }
    const folder = folderOf(module.filename);
    const body = prelude.native.compileModule(file.path, text);
    body.call(module.exports, module.exports, requireIn(() => folder), module, module.filename,
              folder);
  }

  // A module that is still being evaluated has exported only a part.
  function load(file) {
    const known = modules.get(file.canonical);
    if (known) return known.exports;
    const module = {id: file.absolute, filename: file.absolute, exports: {}, loaded: false};
    modules.set(file.canonical, module);
    try {
      evaluate(module, file);
      module.loaded = true;
    } finally {
      if (!module.loaded) modules.delete(file.canonical);
    }
    return module.exports;
  }
  function requireIn(folder) {
    const require = name => load(find(name, folder()));
    require.resolve = name => find(name, folder()).absolute;
    return require;
  }

  // Relative to the script that calls.
  prelude.defineFunctions({require: requireIn(() => prelude.native.callersFolder())});
})
