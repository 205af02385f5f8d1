// An end of a pipe, or an open file, which takes the place of the pipe: what is written goes into
// it at once.
(function (prelude) {
  'use strict';

  const {native} = prelude;
  // As large as files are read at most.
  const mostBytes = 512 * 2 ** 20;
  const failed = message => prelude.exception('NSFileHandleOperationException', message);
  const label = selector => selector.endsWith(':') ? selector : `${selector}:`;
  function takeOffset(value, selector) {
    const offset = prelude.takeNumber(value, selector);
    if (Number.isInteger(offset) && offset >= 0 && offset <= mostBytes) return offset;
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes a whole number from 0 to ${mostBytes}, not ${offset}`);
  }

  class OpenFile {
    constructor(path) { Object.assign(this, {path, at: 0}); }
    get bytes() {
      const {bytes, message} = native.readFile(this.path);
      if (bytes === undefined) throw failed(message);
      return bytes;
    }
    read() {
      const rest = this.bytes.slice(this.at);
      this.at += rest.length;
      return rest;
    }
    write(data) {
      const before = this.bytes;
      const end = takeOffset(this.at + data.length, 'writeData:');
      const after = new Uint8Array(Math.max(before.length, end));
      after.set(before);
      after.set(data, this.at);
      this.store(after);
      this.at = end;
    }
    store(bytes) {
      const result = native.writeFile(this.path, bytes);
      if ('message' in result) throw failed(result.message);
    }
    truncate(length) {
      const before = this.bytes;
      const bytes = new Uint8Array(length);
      bytes.set(before.subarray(0, length));
      this.store(bytes);
      this.at = length;
    }
    close() {}
  }

  class FileHandle {
    constructor(pipe, modes) { Object.assign(this, {pipe, modes, isClosed: false}); }
    // What it is open on.
    opened(selector, mode) {
      if (this.isClosed) throw failed(`${label(selector)} the file is closed`);
      if (mode && !this.modes.includes(mode)) {
        throw failed(`${label(selector)} the file is not open for ${mode}`);
      }
      return this.pipe;
    }
    file(selector, mode) {
      const file = this.opened(selector, mode);
      if (file instanceof OpenFile) return file;
      throw failed(`${label(selector)} a pipe has no position`);
    }
  }
  prelude.newFileHandle = (pipe, modes) => new FileHandle(pipe, modes);
  const open = (selector, modes) => path => {
    const file = prelude.expandPath(prelude.takeString(path, selector));
    return native.fileExists(file) ? new FileHandle(new OpenFile(file), modes) : null;
  };
  const kinds = {Reading: ['reading'], Writing: ['writing'], Updating: ['reading', 'writing']};
  return prelude.defineClass({
    name: 'NSFileHandle',
    implementation: FileHandle,
    initializers: {},
    classOperations: Object.fromEntries(Object.entries(kinds).map(([kind, modes]) => {
      const selector = `fileHandleFor${kind}AtPath:`;
      return [selector, open(selector, modes)];
    })),
    operations: {
      'seekToEndOfFile'() {
        const file = this.file('seekToEndOfFile');
        file.at = file.bytes.length;
        return file.at;
      },
      'seekToFileOffset:'(offset) {
        this.file('seekToFileOffset:').at = takeOffset(offset, 'seekToFileOffset:');
      },
      'offsetInFile'() { return this.file('offsetInFile').at; },
      'truncateFileAtOffset:'(offset) {
        this.file('truncateFileAtOffset:', 'writing')
            .truncate(takeOffset(offset, 'truncateFileAtOffset:'));
      },
      'readDataToEndOfFile'() {
        return this.opened('readDataToEndOfFile', 'reading').read(native.readProgram);
      },
      'availableData'() {
        return this.opened('availableData', 'reading').read(native.readSomeOfProgram);
      },
      'writeData:'(data) {
        const pipe = this.opened('writeData:', 'writing');
        if (!(data instanceof Uint8Array)) {
          throw prelude.exception('NSInvalidArgumentException',
                                  `writeData: takes bytes, not ${prelude.describeKind(data)}`);
        }
        pipe.write(data);
      },
      'closeFile'() {
        if (!this.isClosed && this.modes.includes('writing')) this.pipe.close();
        this.isClosed = true;
      },
    },
  });
})
