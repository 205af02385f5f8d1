#include "ui/ViewController.h"

#include "platform/Log.h"
#include "ui/InterfaceFile.h"

namespace kelvar {

ViewController::ViewController(const QString& nibName, const QString& bundle)
    : nibName_(nibName), bundle_(bundle) {}

ViewController::~ViewController() = default;

QWidget* ViewController::view() {
  const ViewRef loaded = viewObject();
  return loaded ? loaded->widget() : nullptr;
}

ViewRef ViewController::viewObject() {
  if (view_) return view_;
  auto& self = dynamic_cast<Object&>(*this);
  view_ = InterfaceFile::load(nibName_, bundle_, self);
  if (view_) {
    view_->setController(self.weak_from_this());
    viewDidLoad();
  } else {
    logLine(u"ViewController: there is no form %@", {nibName_});
  }
  return view_;
}

void ViewController::viewDidLoad() {}

}  // namespace kelvar
