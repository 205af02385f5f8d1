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
      'operatingSystemVersion'() {
        const [major = 0, minor = 0, patch = 0] =
            (native.system().systemVersion.match(/\d+/g) ?? []).map(Number);
        return {majorVersion: major, minorVersion: minor, patchVersion: patch};
      },
      'processorCount': () => native.system().processors,
      'activeProcessorCount': () => native.system().processors,
      'physicalMemory': () => native.system().memory,
    },
  });
})
