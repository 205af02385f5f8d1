// A program that a script starts.
(function (prelude) {
  'use strict';

  const {native} = prelude;
  const invalid = message => prelude.exception('NSInvalidArgumentException', message);
  prelude.classNamed('NSPipe');
  const slot = (name, convert) => ({
    get() { return this[name]; },
    set(value) { this[name] = prelude.isNull(value) ? null : convert(value); },
  });
  const pipe = (name, selector) => slot(name, value => {
    if (prelude.isPipe(value)) return value;
    throw invalid(`${selector} takes an NSPipe, not ${prelude.describeKind(value)}`);
  });
  const path = (name, selector) =>
      slot(name, value => prelude.expandPath(prelude.takeString(value, selector)));
  const url = (name, selector) => ({
    get() {
      return this[name] === null ? null : native.classNamed('NSURL').fileURLWithPath_(this[name]);
    },
    set(value) { this[name] = prelude.pathOfFileURL(value, selector); },
  });

  class Task {
    constructor() {
      Object.assign(this, {file: null, words: [], folder: null, variables: null, handler: null});
      Object.assign(this, {input: null, output: null, errors: null, number: null});
    }
    start() {
      if (this.number !== null) throw invalid('the task was launched before');
      if (!this.file) throw invalid('the task has no launch path');
      const options = prelude.newDictionary();
      if (this.folder) options.folder = this.folder;
      if (this.variables) options.environment = this.variables;
      Object.assign(options, {
        pipesInput: this.input !== null, pipesOutput: this.output !== null,
        pipesErrors: this.errors !== null,
        mergesErrors: this.errors !== null && this.errors === this.output,
      });
      this.number = native.launchProgram(this.file, this.words, options);
      this.errors?.attach(this.number, true);
      this.output?.attach(this.number, false);
      this.input?.attach(this.number, false);
      this.input?.flush();
      if (this.handler) this.watch();
    }
    watch() {
      const timer = prelude.startTimer(() => {
        if (native.isProgramRunning(this.number)) return;
        native.stopTimer(timer);
        this.handler(this);
      }, 0.01, true);
    }
    runs() { return this.number !== null && native.isProgramRunning(this.number); }
    ended() {
      if (this.number === null) throw invalid('the task was not launched');
      if (this.runs()) throw invalid('the task is still running');
      return native.stateOfProgram(this.number);
    }
  }
  return prelude.defineClass({
    name: 'NSTask',
    implementation: Task,
    classOperations: {
      'launchedTaskWithLaunchPath:arguments:'(file, words) {
        const task = new Task();
        task.launchPath = file;
        task.arguments = words;
        task.start();
        return task;
      },
    },
    properties: {
      launchPath: path('file', 'setLaunchPath:'),
      executableURL: url('file', 'setExecutableURL:'),
      currentDirectoryPath: path('folder', 'setCurrentDirectoryPath:'),
      currentDirectoryURL: url('folder', 'setCurrentDirectoryURL:'),
      arguments: slot('words', list => prelude.takeList(list, 'setArguments:').map(String)),
      environment: slot('variables', each => prelude.takeDictionary(each, 'setEnvironment:')),
      standardInput: pipe('input', 'setStandardInput:'),
      standardOutput: pipe('output', 'setStandardOutput:'),
      standardError: pipe('errors', 'setStandardError:'),
      terminationHandler:
          slot('handler', work => prelude.takeFunction(work, 'setTerminationHandler:')),
    },
    operations: {
      'launch'() { this.start(); },
      'launchAndReturnError:'(error) {
        try {
          this.start();
          return true;
        } catch (failed) {
          prelude.store(error, prelude.newError('NSCocoaErrorDomain', 4, {
            NSLocalizedDescription: failed.message, NSFilePath: this.file,
          }));
          return false;
        }
      },
      'waitUntilExit'() { if (this.number !== null) native.waitForProgram(this.number); },
      'isRunning'() { return this.runs(); },
      'terminationStatus'() { return this.ended().status; },
      'terminationReason'() { return this.ended().isSignal ? 2 : 1; },
      'processIdentifier'() {
        return this.runs() ? native.stateOfProgram(this.number).identifier : 0;
      },
      'terminate'() { if (this.number !== null) native.endProgram(this.number); },
    },
  });
})
