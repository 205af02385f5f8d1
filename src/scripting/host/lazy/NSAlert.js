(function (prelude) {
  'use strict';

  const textOf = value => value === null || value === undefined ? '' : String(value);
  const takeView = (view, selector) => {
    if (typeof view === 'object' && prelude.native.isView(view)) return view;
    throw prelude.exception('NSInvalidArgumentException',
        `${selector} takes an NSView, not ${prelude.describeKind(view)}`);
  };
  const newButton = () => prelude.native.classNamed('NSButton').new();

  class Alert {
    constructor() {
      Object.assign(this, {message: '', details: '', choices: [], look: 0, image: null});
      Object.assign(this, {view: null, suppression: null, isSuppressible: false, panel: null});
    }
    add(title, tag) {
      const button = newButton();
      button.setTitle(title);
      button.setTag(tag);
      this.choices.push(button);
      return button;
    }
    // What nobody's answer means, if there is such a button.
    cancelTitle() {
      const isCancel = button => textOf(button.keyEquivalent()) === '\x1b' ||
          /^\s*(cancel|close|no)\s*$/i.test(textOf(button.title()));
      const found = this.choices.find(isCancel);
      return found ? textOf(found.title()) : null;
    }
    fields() {
      return [this.view, this.isSuppressible ? this.suppressionBox() : null].filter(Boolean);
    }
    suppressionBox() {
      if (!this.suppression) {
        this.suppression = newButton();
        this.suppression.setButtonType(3);
        this.suppression.setTitle('Do not show this message again');
      }
      return this.suppression;
    }
    run() {
      if (this.choices.length === 0) this.add('OK', 1000);
      const text = [this.message, this.details].filter(Boolean).join('\n');
      const titles = this.choices.map(button => textOf(button.title()));
      const dismissal = this.cancelTitle();
      let chosen = 0;
      if (titles.length === 1) {
        if (text !== '') prelude.native.showMessage(text);
      } else {
        chosen = titles.indexOf(
            prelude.native.askUser(text, titles, titles[0], dismissal, false));
      }
      if (titles.length === 1 || titles[chosen] !== dismissal) {
        prelude.native.askFields(this.fields());
      }
      return this.choices[chosen].tag();
    }
  }
  const withTexts = (message, primary, second, third, format, ...values) => {
    const alert = new Alert();
    alert.message = textOf(message);
    alert.details = format ? prelude.format(String(format), values) : '';
    alert.add(textOf(primary) || 'OK', globalThis.NSAlertDefaultReturn);
    if (second) alert.add(String(second), globalThis.NSAlertAlternateReturn);
    if (third) alert.add(String(third), globalThis.NSAlertOtherReturn);
    return alert;
  };

  prelude.alertFields = (alert, fields) => { alert.fields = fields; };
  prelude.takeView = takeView;
  return prelude.defineClass({
    name: 'NSAlert',
    implementation: Alert,
    classOperations: {
      ['alertWithMessageText:defaultButton:alternateButton:otherButton:' +
       'informativeTextWithFormat:']: withTexts,
      'alertWithError:': error => withTexts(error?.localizedDescription?.() ?? error),
    },
    properties: {
      messageText: {
        get() { return this.message; },
        set(text) { this.message = textOf(text); },
      },
      informativeText: {
        get() { return this.details; },
        set(text) { this.details = textOf(text); },
      },
      alertStyle: {
        get() { return this.look; },
        set(style) { this.look = prelude.takeNumber(style, 'setAlertStyle:'); },
      },
      icon: {
        get() { return this.image; },
        set(image) { this.image = image ?? null; },
      },
      accessoryView: {
        get() { return this.view; },
        set(view) {
          this.view = prelude.isNull(view) ? null : takeView(view, 'setAccessoryView:');
        },
      },
      showsSuppressionButton: {
        get() { return this.isSuppressible; },
        set(shows) { this.isSuppressible = Boolean(shows); },
      },
    },
    operations: {
      'addButtonWithTitle:'(title) {
        return this.add(prelude.takeString(title, 'addButtonWithTitle:'),
                        globalThis.NSAlertFirstButtonReturn + this.choices.length);
      },
      'buttons'() { return [...this.choices]; },
      'suppressionButton'() { return this.suppressionBox(); },
      // It is never shown.
      'window'() {
        return this.panel ??= prelude.native.classNamed('NSPanel').alloc()
            .initWithContentRect_styleMask_backing_defer_(prelude.rect(0, 0, 420, 120), 1, 2, true);
      },
      'layout'() {},
      'runModal'() { return this.run(); },
      'beginSheetModalForWindow:completionHandler:'(_, handler) {
        const answer = this.run();
        if (!prelude.isNull(handler)) prelude.takeFunction(handler, 'completionHandler')(answer);
      },
    },
  });
})
