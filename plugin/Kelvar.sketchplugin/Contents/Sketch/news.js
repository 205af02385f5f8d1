// Asks the vendor's server. Without a server nothing is sent.

function checkVersion(context) {
  const checker = [KVVersionChecker checkerWithIdentifier:context.plugin.identifier()
                                                     name:context.plugin.version()];
  checker.delegate = {
    checkerDidFinish(checker) {
      // Nil for an unreadable reply; anything if it is the server's own.
      const error = checker.error();
      if (!checker.success()) {
        throw new Error(error?.message ?? `the server's reply is invalid: ${JSON.stringify(error)}`);
      }
      log(checker.isExpired() ? checker.expiredMessage() ?? "This version has expired."
                              : "This version is current.");
    },
  };
  [checker start];
}

// Shows the messages that were fetched before. The new ones appear next time.
function showMessages(context) {
  const kelvar = [[Kelvar alloc] init];
  const messages = [kelvar objectForKey:"io.kelvarlabs.kelvar.servermessage"] ?? [];
  for (const message of messages.filter(each => !each.read)) log(message.message);
  if (kelvar.persister() !== nil) [kelvar loadServerNotification];
}
