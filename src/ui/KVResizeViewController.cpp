#include "ui/KVResizeViewController.h"

#include "runtime/ClassInfo.h"
#include "ui/InterfaceFile.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVResizeViewController::staticClassInfo);

}  // namespace

const ClassInfo& KVResizeViewController::staticClassInfo() {
  using C = KVResizeViewController;
  static const ClassInfo kClass =
      ClassInfoBuilder<C, KVViewController>("KVResizeViewController")
          .initializer(
              "init", [] { return C::initWithNibName(); },
              "Creates a controller for the wide row of a layer.")
          .initializer("initWithNibName:bundle:", &C::initWithNibName,
                       "Creates a controller for a form; nil if there is no such form.");
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
