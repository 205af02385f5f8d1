#include "scripting/host/DialogFunctions.h"

#include "platform/UserDialog.h"
#include "platform/files/FileName.h"
#include "runtime/raise.h"
#include "scripting/host/FieldQuestions.h"
#include "ui/View.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

QString askUser(const QString& text, const QStringList& choices, const QString& initial,
                const QString& dismissal, bool isSecret) {
  const QString answer = orRaise(UserDialog::ask({.text = text,
                                                  .choices = choices,
                                                  .initial = initial,
                                                  .dismissal = dismissal,
                                                  .isSecret = isSecret}));
  return answer.isNull() ? u""_s : answer;
}

void askFields(const QList<ViewRef>& views) { FieldQuestions().ask(views); }

bool isView(const QVariant& value) {
  return std::dynamic_pointer_cast<View>(value.value<ObjectRef>()) != nullptr;
}

}  // namespace

const ClassInfo& DialogFunctions::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<DialogFunctions>("")
          .classOperation("showMessage", UserDialog::show, "Shows the user a message.")
          .classOperation("askUser", askUser, "The user's answer to a question.")
          .classOperation("askFields", askFields, "Asks for the values of fields.")
          .classOperation("isView", isView, "Whether it is a view.")
          .classOperation("absolutePath", absoluteFileName, "The absolute path of a file.");
  return kClass;
}

}  // namespace kelvar
