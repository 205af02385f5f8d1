#include "ui/KVResizeViewController.h"

#include "runtime/ClassInfo.h"
#include "ui/InterfaceFile.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVResizeViewController::theClass);

}  // namespace

const ClassInfo& KVResizeViewController::theClass() {
  using C = KVResizeViewController;
  static const ClassInfo kClass = Description<C, KVViewController>("KVResizeViewController")
                                      .initialiser("init", [] { return C::initWithNibName(); })
                                      .initialiser("initWithNibName:bundle:", &C::initWithNibName);
  return kClass;
}

std::shared_ptr<KVResizeViewController> KVResizeViewController::initWithNibName(
    const QString& nibName, const QString& bundle) {
  const QString name = nibName.isNull() ? QStringLiteral("KVResizeViewController") : nibName;
  if (!InterfaceFile::exists(name, bundle)) return nullptr;
  return std::make_shared<KVResizeViewController>(name, bundle);
}

KVResizeViewController::KVResizeViewController(const QString& nibName, const QString& bundle)
    : KVViewController(nibName, bundle) {}

void KVResizeViewController::viewDidLoad() { KVViewController::viewDidLoad(); }

}  // namespace kelvar
