(function (prelude) {
  'use strict';

  const {native} = prelude;
  class ProcessInfo {}
  const shared = new ProcessInfo();
  return prelude.defineClass({
    name: 'NSProcessInfo',
    implementation: ProcessInfo,
    initializers: {},
    classOperations: {'processInfo': () => shared},
    operations: {
      'arguments': () => [native.system().processName, ...(globalThis.context?.arguments ?? [])],
      'environment': () => native.environment(),
      'processName': () => native.system().processName,
      'processIdentifier': () => native.system().processId,
      'globallyUniqueString': () => native.newIdentifier().toUpperCase(),
      'hostName': () => native.system().hostName,
      'userName': () => native.system().userName,
      'fullUserName': () => native.system().fullUserName,
      'operatingSystemVersionString': () => native.system().systemVersion,
      'processorCount': () => native.system().processors,
      'activeProcessorCount': () => native.system().processors,
      'physicalMemory': () => native.system().memory,
    },
  });
})
