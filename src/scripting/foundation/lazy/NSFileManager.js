(function (prelude) {
  'use strict';

  const {takeString, takeDictionary} = prelude;
  const native = prelude.native;
  const path = (text, selector) => prelude.expandPath(takeString(text, selector));
  const pathOf = (url, selector) => prelude.pathOfFileURL(url, selector);
  const done = prelude.fileSucceeded;
  const answer = (result, key, error) =>
      key in result ? result[key] : prelude.fileFailed(result, error);

  // Below a folder, in order, each folder before what it contains.
  const maxDepth = 100;
  function subpaths(folder, prefix = '', found = [], depth = 0) {
    for (const name of native.namesInFolder(folder).names ?? []) {
      const whole = `${folder}/${name}`;
      found.push(prefix + name);
      const isFolder = native.attributesOf(whole).NSFileType === 'NSFileTypeDirectory';
      if (isFolder && depth < maxDepth) subpaths(whole, `${prefix}${name}/`, found, depth + 1);
    }
    return found;
  }

  class FileManager {}
  const shared = new FileManager();
  const attributes = (file, error) => {
    const found = native.attributesOf(file);
    return found.NSFileType ? found : prelude.fileFailed(found, error);
  };
  const setAttributes = (wanted, file, error) => {
    const permissions = takeDictionary(wanted,
        'setAttributes:ofItemAtPath:error:').NSFilePosixPermissions;
    return permissions === undefined || done(native.setPermissions(file, permissions), error);
  };
  const createFolder = (file, parents, wanted, error) =>
      done(native.createFolder(file, Boolean(parents)), error) &&
      (prelude.isNull(wanted) || setAttributes(wanted, file, error));
  const entries = (folder, error) => answer(native.namesInFolder(folder), 'names', error);
  const urlsIn = (folder, error) => entries(folder, error)?.map(
      each => NSURL.fileURLWithPath_(`${folder.replace(/\/$/, '')}/${each}`)) ?? null;

  const ofPaths = {
    'fileExistsAtPath:': file => native.fileExists(path(file, 'fileExistsAtPath:')),
    'fileExistsAtPath:isDirectory:'(file, isFolder) {
      const whole = path(file, 'fileExistsAtPath:isDirectory:');
      prelude.store(isFolder, native.isFolder(whole));
      return native.fileExists(whole);
    },
    'isReadableFileAtPath:': file =>
        native.isAccessible(path(file, 'isReadableFileAtPath:'), 'read'),
    'isWritableFileAtPath:': file =>
        native.isAccessible(path(file, 'isWritableFileAtPath:'), 'write'),
    'isExecutableFileAtPath:': file =>
        native.isAccessible(path(file, 'isExecutableFileAtPath:'), 'execute'),
    'contentsOfDirectoryAtPath:error:': (folder, error) =>
        entries(path(folder, 'contentsOfDirectoryAtPath:error:'), error),
    'subpathsAtPath:'(folder) {
      const whole = path(folder, 'subpathsAtPath:');
      return native.isFolder(whole) ? subpaths(whole) : null;
    },
    'subpathsOfDirectoryAtPath:error:'(folder, error) {
      const whole = path(folder, 'subpathsOfDirectoryAtPath:error:');
      return entries(whole, error) && subpaths(whole);
    },
    'enumeratorAtPath:'(folder) {
      const whole = path(folder, 'enumeratorAtPath:');
      return native.isFolder(whole) ? prelude.enumeratorOf(subpaths(whole)) : null;
    },
    'createDirectoryAtPath:withIntermediateDirectories:attributes:error:': (
        folder, parents, wanted, error) =>
      createFolder(path(folder, 'createDirectoryAtPath:'), parents, wanted, error),
    'createFileAtPath:contents:attributes:': (file, data) => prelude.writeFile(
        file, data ?? new Uint8Array(0), null, 'createFileAtPath:contents:attributes:'),
    'removeItemAtPath:error:': (file, error) =>
        done(native.removeFile(path(file, 'removeItemAtPath:error:')), error),
    'copyItemAtPath:toPath:error:': (from, to, error) => done(native.copyFile(
        path(from, 'copyItemAtPath:toPath:error:'), path(to, 'copyItemAtPath:toPath:error:')),
            error),
    'moveItemAtPath:toPath:error:': (from, to, error) => done(native.moveFile(
        path(from, 'moveItemAtPath:toPath:error:'), path(to, 'moveItemAtPath:toPath:error:')),
            error),
    'createSymbolicLinkAtPath:withDestinationPath:error:': (file, target, error) => done(
        native.createLink(path(file, 'createSymbolicLinkAtPath:'),
                          takeString(target, 'createSymbolicLinkAtPath:')), error),
    'attributesOfItemAtPath:error:': (file, error) =>
        attributes(path(file, 'attributesOfItemAtPath:error:'), error),
    'setAttributes:ofItemAtPath:error:': (wanted, file, error) =>
        setAttributes(wanted, path(file, 'setAttributes:ofItemAtPath:error:'), error),
    'contentsAtPath:': file => prelude.readFile(file, each => each, null, 'contentsAtPath:'),
    'contentsEqualAtPath:andPath:'(one, other) {
      const [a, b] = [one, other].map(each => shared.contentsAtPath_(each));
      return a !== null && b !== null && prelude.isEqual(a, b);
    },
    'displayNameAtPath:': file => takeString(file, 'displayNameAtPath:').lastPathComponent(),
  };
  const ofURLs = {
    'createDirectoryAtURL:withIntermediateDirectories:attributes:error:': (
        url, parents, wanted, error) =>
      createFolder(pathOf(url, 'createDirectoryAtURL:'), parents, wanted, error),
    'removeItemAtURL:error:': (url, error) =>
        done(native.removeFile(pathOf(url, 'removeItemAtURL:error:')), error),
    'copyItemAtURL:toURL:error:': (from, to, error) => done(native.copyFile(
        pathOf(from, 'copyItemAtURL:toURL:error:'), pathOf(to, 'copyItemAtURL:toURL:error:')),
            error),
    'moveItemAtURL:toURL:error:': (from, to, error) => done(native.moveFile(
        pathOf(from, 'moveItemAtURL:toURL:error:'), pathOf(to, 'moveItemAtURL:toURL:error:')),
            error),
    'contentsOfDirectoryAtURL:includingPropertiesForKeys:options:error:': (url, _, options,
        error) =>
        urlsIn(pathOf(url, 'contentsOfDirectoryAtURL:'), error),
    'URLsForDirectory:inDomains:': (folder, domains) =>
        NSSearchPathForDirectoriesInDomains(folder, domains, true)
            .map(each => NSURL.fileURLWithPath_(each)),
  };
  const places = {
    'currentDirectoryPath': () => native.system().folder,
    'homeDirectoryForCurrentUser': () => NSURL.fileURLWithPath_(native.homeDirectory()),
    'temporaryDirectory': () => NSURL.fileURLWithPath_(native.temporaryDirectory()),
  };

  return prelude.defineClass({
    name: 'NSFileManager',
    implementation: FileManager,
    initializers: {'init': () => shared},
    classOperations: {'defaultManager': () => shared},
    operations: {...ofPaths, ...ofURLs, ...places},
  });
})
