#include "platform/store/UserEmail.h"

#include "platform/store/UserDefaults.h"

namespace kelvar {

QString userEmail() {
  const QString key = QStringLiteral("io.kelvarlabs.kelvar.email");
  const QVariant stored = UserDefaults::standard().objectForKey(key);
  const QString email = stored.typeId() == QMetaType::QString ? stored.toString() : QString();
  return email.isEmpty() ? QString() : email;
}

}  // namespace kelvar
