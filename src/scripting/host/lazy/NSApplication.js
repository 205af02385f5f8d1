(function (prelude) {
  'use strict';

  class Application {}
  const shared = new Application();
  const show = (text, title) =>
      prelude.native.showMessage([title, text].filter(Boolean).map(String).join('\n'));
  return prelude.defineClass({
    name: 'NSApplication',
    implementation: Application,
    initializers: {},
    classOperations: {'sharedApplication': () => shared},
    operations: {
      'displayDialog:'(text) { show(text, null); },
      'displayDialog:withTitle:'(text, title) { show(text, title); },
      'mainWindow'() { return null; },
      'orderedDocuments': () => prelude.classNamed('NSDocumentController')
          .sharedDocumentController().documents(),
    },
  });
})
