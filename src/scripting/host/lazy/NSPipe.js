// What a script reads of a program, or writes for it.
(function (prelude) {
  'use strict';

  const {native} = prelude;
  class Pipe {
    constructor() { Object.assign(this, {program: null, isErrors: false, waiting: []}); }
    // From then on, the pipe is the program's.
    attach(program, isErrors) { Object.assign(this, {program, isErrors}); }
    read(operation) {
      return this.program === null ? new Uint8Array(0) : operation(this.program, this.isErrors);
    }
    write(bytes) {
      if (this.program === null) this.waiting.push(bytes);
      else native.writeToProgram(this.program, bytes);
    }
    close() {
      if (this.program === null) this.waiting.push(null);
      else native.closeProgramInput(this.program);
    }
    // Writes what was given before the program was there.
    flush() {
      for (const bytes of this.waiting.splice(0)) bytes === null ? this.close() : this.write(bytes);
    }
  }
  // A file takes the place of a pipe: what is written goes into it at once.
  class OpenFile {
    constructor(path) { Object.assign(this, {path, at: 0}); }
    get bytes() { return native.readFile(this.path).bytes ?? new Uint8Array(0); }
    read() {
      const rest = this.bytes.slice(this.at);
      this.at += rest.length;
      return rest;
    }
    write(data) {
      const before = this.bytes;
      const after = new Uint8Array(Math.max(before.length, this.at + data.length));
      after.set(before);
      after.set(data, this.at);
      this.store(after);
      this.at += data.length;
    }
    store(bytes) {
      const result = native.writeFile(this.path, bytes);
      if ('message' in result) {
        throw prelude.exception('NSFileHandleOperationException', result.message);
      }
    }
    truncate(length) {
      const bytes = new Uint8Array(length);
      bytes.set(this.bytes.subarray(0, length));
      this.store(bytes);
      this.at = length;
    }
    close() {}
  }
  const opened = selector => path => {
    const file = prelude.expandPath(prelude.takeString(path, selector));
    return native.fileExists(file) ? new FileHandle(new OpenFile(file), true) : null;
  };
  const fileOf = (handle, selector) => {
    if (handle.pipe instanceof OpenFile) return handle.pipe;
    throw prelude.exception('NSFileHandleOperationException',
                            `${selector}: a pipe has no position`);
  };
  class FileHandle {
    constructor(pipe, isForWriting) { Object.assign(this, {pipe, isForWriting}); }
  }
  prelude.isPipe = value => value instanceof Pipe;
  prelude.defineClass({
    name: 'NSFileHandle',
    implementation: FileHandle,
    initializers: {},
    classOperations: Object.fromEntries(['Reading', 'Writing', 'Updating'].map(kind => {
      const selector = `fileHandleFor${kind}AtPath:`;
      return [selector, opened(selector)];
    })),
    operations: {
      'seekToEndOfFile'() {
        const file = fileOf(this, 'seekToEndOfFile');
        file.at = file.bytes.length;
        return file.at;
      },
      'seekToFileOffset:'(offset) {
        fileOf(this, 'seekToFileOffset:').at = prelude.takeNumber(offset, 'seekToFileOffset:');
      },
      'offsetInFile'() { return fileOf(this, 'offsetInFile').at; },
      'truncateFileAtOffset:'(offset) {
        fileOf(this, 'truncateFileAtOffset:').truncate(
            prelude.takeNumber(offset, 'truncateFileAtOffset:'));
      },
      'readDataToEndOfFile'() { return this.pipe.read(native.readProgram); },
      'availableData'() { return this.pipe.read(native.readSomeOfProgram); },
      'writeData:'(data) {
        if (!(data instanceof Uint8Array)) {
          throw prelude.exception('NSInvalidArgumentException',
                                  `writeData: takes bytes, not ${prelude.describeKind(data)}`);
        }
        this.pipe.write(data);
      },
      'closeFile'() { if (this.isForWriting) this.pipe.close(); },
    },
  });
  return prelude.defineClass({
    name: 'NSPipe',
    implementation: Pipe,
    classOperations: {'pipe': () => new Pipe()},
    operations: {
      'fileHandleForReading'() { return new FileHandle(this, false); },
      'fileHandleForWriting'() { return new FileHandle(this, true); },
    },
  });
})
