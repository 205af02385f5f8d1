// There is one document at most, the one that the script was given.
(function (prelude) {
  'use strict';

  class DocumentController {}
  const shared = new DocumentController();
  const current = () => globalThis.MSDocument.currentDocument();
  return prelude.defineClass({
    name: 'NSDocumentController',
    implementation: DocumentController,
    initializers: {},
    classOperations: {'sharedDocumentController': () => shared},
    operations: {
      'currentDocument': current,
      'documents': () => [current()].filter(each => each !== null),
    },
  });
})
