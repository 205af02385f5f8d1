// The target of a control and the selector that it is sent, which take the place of the control's
// function. The action "callAction:" names that function itself.
(function (prelude) {
  'use strict';

  const known = new WeakMap();
  const of = control => {
    if (!known.has(control)) known.set(control, {target: null, action: null});
    return known.get(control);
  };
  const send = (control, action, target) => {
    __kelvarSend(target, prelude.scriptName(action), control);
  };
  const change = (control, changes) => {
    const {target, action} = Object.assign(of(control), changes);
    if (target === null || action === null || action === 'callAction:') return;
    control.setCOSJSTargetFunction(sender => send(sender, action, target));
  };
  const operations = {
    'target'() { return of(this).target; },
    'action'() { return of(this).action; },
    'setTarget:'(target) { change(this, {target: target ?? null}); },
    'setAction:'(action) {
      change(this, {action: action == null ? null : prelude.takeString(action, 'setAction:')});
    },
    'sendAction:to:'(action, target) {
      if (action == null || target == null) return false;
      send(this, prelude.takeString(action, 'sendAction:to:'), target);
      return true;
    },
  };
  // For the prototype of a class of views.
  prelude.addTargets = prototype => {
    if ('setCOSJSTargetFunction_' in prototype) prelude.addOperations(prototype, operations);
  };
})
