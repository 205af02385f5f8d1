#include "platform/UserDialog.h"

#include "platform/Log.h"
#include "platform/QtError.h"

namespace kelvar {
namespace {

Result<QString> failToAsk(const UserDialog::Question& question) {
  return failure(
      Error::Kind::Unsupported,
      QStringLiteral("nobody can be asked \"%1\"").arg(question.text.section(u'\n', 0, 0)));
}

UserDialog::Handler& handler() {
  static UserDialog::Handler kHandler{.show = warnUser, .ask = failToAsk};
  return kHandler;
}

}  // namespace

void UserDialog::install(const Handler& installed) {
  handler() = installed.ask ? installed : Handler{.show = warnUser, .ask = failToAsk};
}
void UserDialog::show(const QString& message) { handler().show(message); }
Result<QString> UserDialog::ask(const Question& question) { return handler().ask(question); }

}  // namespace kelvar
