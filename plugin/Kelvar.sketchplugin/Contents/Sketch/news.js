// What the vendor's server says. Without a server nothing is sent.

function checkVersion(context) {
  const checker = [KVVersionChecker checkerWithIdentifier:context.plugin.identifier()
                                                     name:context.plugin.version()];
  checker.delegate = {
    checkerDidFinish(checker) {
      // An answer that cannot be read leaves no error, and a server's may be anything.
      const error = checker.error();
      if (!checker.success()) {
        throw new Error(error?.message ?? `the server's answer is no use: ${JSON.stringify(error)}`);
      }
      log(checker.isExpired() ? checker.expiredMessage() ?? "This version has expired."
                              : "This version is current.");
    },
  };
  [checker start];
}

// Those that were fetched before; what is fetched now is there the next time.
function showMessages(context) {
  const kelvar = [[Kelvar alloc] init];
  const messages = [kelvar objectForKey:"io.kelvarlabs.kelvar.servermessage"] ?? [];
  for (const message of messages.filter(each => !each.read)) log(message.message);
  if (kelvar.persister() !== nil) [kelvar loadServerNotification];
}
