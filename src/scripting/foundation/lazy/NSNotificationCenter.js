(function (prelude) {
  'use strict';

  class Notification {
    constructor(name, object, info) { Object.assign(this, {title: name, sender: object, info}); }
  }
  prelude.defineClass({
    name: 'NSNotification',
    implementation: Notification,
    initializers: {},
    operations: {
      'name'() { return this.title; },
      'object'() { return this.sender; },
      'userInfo'() { return this.info; },
    },
  });

  class Center {
    constructor() { this.observers = []; }
    post(name, object, info) {
      const notification = new Notification(String(name), object ?? null, info ?? null);
      for (const each of [...this.observers]) {
        const isMeant = (each.name === null || each.name === notification.title) &&
            (each.sender === null || each.sender === notification.sender);
        if (isMeant) each.call(notification);
      }
    }
    add(entry) {
      this.observers.push({...entry, name: entry.name == null ? null : String(entry.name),
                           sender: entry.sender ?? null});
    }
    remove(observer, name = null, sender = null) {
      this.observers = this.observers.filter(each => each.observer !== observer ||
          name !== null && each.name !== String(name) || sender !== null && each.sender !== sender);
    }
  }
  const shared = new Center();
  return prelude.defineClass({
    name: 'NSNotificationCenter',
    implementation: Center,
    classOperations: {'defaultCenter': () => shared},
    operations: {
      'addObserver:selector:name:object:'(observer, selector, name, sender) {
        const method = prelude.scriptName(prelude.takeString(selector, 'addObserver:selector:'));
        this.add({observer, name, sender, call: each => __kelvarSend(observer, method, each)});
      },
      'addObserverForName:object:queue:usingBlock:'(name, sender, _, block) {
        const observer = prelude.newDictionary();
        this.add({observer, name, sender, call: prelude.takeFunction(block,
            'addObserverForName:')});
        return observer;
      },
      'postNotificationName:object:'(name, sender) { this.post(name, sender, null); },
      'postNotificationName:object:userInfo:'(name, sender, info) {
        this.post(name, sender, info);
      },
      'removeObserver:'(observer) { this.remove(observer); },
      'removeObserver:name:object:'(observer, name, sender) {
        this.remove(observer, name, sender);
      },
    },
  });
})
