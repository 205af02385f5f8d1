// What a script reads of a program, or writes for it.
(function (prelude) {
  'use strict';

  const {native} = prelude;
  const handleOf = (pipe, mode) => {
    prelude.classNamed('NSFileHandle');
    return prelude.newFileHandle(pipe, [mode]);
  };
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
  prelude.isPipe = value => value instanceof Pipe;
  return prelude.defineClass({
    name: 'NSPipe',
    implementation: Pipe,
    classOperations: {'pipe': () => new Pipe()},
    operations: {
      'fileHandleForReading'() { return handleOf(this, 'reading'); },
      'fileHandleForWriting'() { return handleOf(this, 'writing'); },
    },
  });
})
