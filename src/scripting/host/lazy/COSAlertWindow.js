// An alert whose accessory views are one below the other.
(function (prelude) {
  'use strict';

  const newField = () => prelude.native.classNamed('NSTextField').new();
  class AlertWindow {
    constructor() {
      this.inner = prelude.classNamed('NSAlert').new();
      this.views = [];
      prelude.alertFields(this.inner, () => this.views);
    }
    add(view, selector) {
      this.views.push(prelude.takeView(view, selector));
      return view;
    }
  }
  const ofAlert = name => ({
    get() { return this.inner[name](); },
    set(value) { this.inner[name] = value; },
  });
  return prelude.defineClass({
    name: 'COSAlertWindow',
    implementation: AlertWindow,
    classOperations: {},
    properties: {
      messageText: ofAlert('messageText'),
      informativeText: ofAlert('informativeText'),
      icon: ofAlert('icon'),
      alertStyle: ofAlert('alertStyle'),
    },
    operations: {
      'alert'() { return this.inner; },
      'addButtonWithTitle:'(title) { return this.inner.addButtonWithTitle_(title); },
      'buttons'() { return this.inner.buttons(); },
      'addTextLabelWithValue:'(text) {
        const label = newField();
        label.setEditable(false);
        label.setStringValue(String(text ?? ''));
        this.add(label, 'addTextLabelWithValue:');
      },
      'addTextFieldWithValue:'(text) {
        const field = newField();
        field.setStringValue(String(text ?? ''));
        this.add(field, 'addTextFieldWithValue:');
      },
      'addAccessoryView:'(view) { this.add(view, 'addAccessoryView:'); },
      'viewAtIndex:'(index) {
        return this.views[prelude.takeIndex(index, this.views.length, 'viewAtIndex:')];
      },
      'runModal'() { return this.inner.runModal(); },
    },
  });
})
