// What the panel has to say: the vendor's messages, a version that has expired, and what was saved.

const kMessages = "io.kelvarlabs.kelvar.servermessage";

// A line of text with a button that runs an action.
function makeMessageLine() {
  const controller = [[KVViewController alloc] initWithNibName:"KVMessageLine" bundle:nil];
  controller.view().hidden = true;
  return {
    ...wrappingPart(controller.view()),
    controller,
    // Without an action there is no button.
    show(message, title, action) {
      controller.message = message;
      controller.actionTitle = title;
      controller.action = action;
      [controller reloadData];
      controller.actionButton().hidden = action === nil;
      controller.view().hidden = false;
    },
  };
}

// The first message of the vendor's that is not read yet, as high as it needs to be at `width`.
// `layOut` is called when its height changes.
function makeBanner(width, layOut) {
  const store = [[KVPersister alloc] init];
  const controller = [[KVViewController alloc] initWithNibName:"KVSoftMessage" bundle:nil];
  const view = controller.view();
  const button = view.subviews().find(each => each.identifier() === "softActionButton");
  view.hidden = true;
  [view setFrameSize:NSMakeSize(width, view.frame().size.height)];
  const showNext = () => {
    const messages = [store objectForKey:kMessages] ?? [];
    const next = messages.find(message => !message.read);
    view.hidden = true;
    if (!next) return layOut();
    button.hidden = next.action === "";
    [controller showSoftMessage:next.message action:next.action messageId:next.id];
  };
  controller.delegate = {
    controllerNeedToUpdateLayout() {
      view.hidden = false;
      layOut();
    },
    controllerDidPressSoftBannerActionButton_messageId_() {
      showNext();
    },
    // The banner is hidden after this call.
    controllerDidPressReadMessageButton_messageId_() {
      setTimeout(showNext, 0);
    },
  };
  return {view, controller, showNext, height: () => view.frame().size.height};
}

// Fetches the vendor's messages for next time, and says on `line` if this version has expired.
// Without a server nothing is sent.
function askVendor(context, line, layOut) {
  const kelvar = [[Kelvar alloc] init];
  if (kelvar.persister() !== nil) [kelvar loadServerNotification];
  const checker = [KVVersionChecker checkerWithIdentifier:context.plugin.identifier()
                                                     name:context.plugin.version()];
  const show = () => {
    if (!checker.isExpired()) return;
    const url = checker.actionURL();
    line.show(checker.expiredMessage() ?? "This version has expired.",
              checker.actionTitle() ?? "Update",
              url === nil ? nil : [KVOpenURLAction openURL:url.absoluteString()]);
    layOut();
  };
  checker.delegate = {checkerDidFinish: show};
  show();
  [checker start];
}

// Says on `line` where changes are saved, with a button that shows the folder. `layOut` is called
// when the line's height changes.
function showSaved(line, path, layOut) {
  const parts = path.split("/");
  const name = parts.pop();
  // The command is split at its blanks, of which a URL has none.
  const folder = "file://" + parts.map(encodeURIComponent).join("/");
  const open = [KVBashAction bash:`xdg-open ${folder}`];
  // A plug-in may start programs only if the user allows it; the error says how.
  const show = {
    exec() {
      try {
        return open.exec();
      } catch (error) {
        line.show(error.message, nil, nil);
        layOut();
        return false;
      }
    },
  };
  line.show(`Changes are saved in ${name}.`, "Show", show);
}
