#include "ui/InterfaceFile.h"

#include <QAbstractButton>
#include <QFile>
#include <QUiLoader>

#include "platform/Log.h"
#include "runtime/ClassInfo.h"
#include "ui/ElidedLabel.h"
#include "ui/GlyphButton.h"
#include "ui/ImageView.h"
#include "ui/KVButton.h"
#include "ui/KVView.h"
#include "ui/PopUpButton.h"
#include "ui/WrappingLabel.h"

namespace kelvar {
namespace {

template <class W>
QWidget* make(QWidget* parent) {
  return new W(parent);
}

/// The classes that forms may use besides Qt's own.
const struct {
  QLatin1StringView name;
  QWidget* (*make)(QWidget* parent);
} kClasses[] = {
    {QLatin1StringView("KVView"), [](QWidget* p) -> QWidget* { return KVView::initWithCoder(p); }},
    {QLatin1StringView("KVButton"), make<KVButton>},
    {QLatin1StringView("PopUpButton"), make<PopUpButton>},
    {QLatin1StringView("GlyphButton"), make<GlyphButton>},
    {QLatin1StringView("ImageView"), make<ImageView>},
    {QLatin1StringView("ElidedLabel"), make<ElidedLabel>},
    {QLatin1StringView("WrappingLabel"), make<WrappingLabel>},
};

class Loader : public QUiLoader {
 public:
  Loader() {
    clearPluginPaths();
    setTranslationEnabled(false);
  }

  QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
    for (const auto& known : kClasses) {
      if (className != known.name) continue;
      QWidget* const widget = known.make(parent);
      widget->setObjectName(name);
      return widget;
    }
    return QUiLoader::createWidget(className, parent, name);
  }
};

/// The places to search for a form, in order.
QStringList places(const QString& name, const QString& folder) {
  QStringList places;
  for (const QString& each : {folder, qEnvironmentVariable("KELVAR_INTERFACE_DIR")}) {
    if (!each.isEmpty()) places.append(QStringLiteral("%1/%2.ui").arg(each, name));
  }
  return places << QStringLiteral(":/kelvar/ui/%1.ui").arg(name);
}

QWidget* read(const QString& name, const QString& folder) {
  Loader loader;
  for (const QString& place : places(name, folder)) {
    QFile file(place);
    if (!file.exists()) continue;
    QWidget* const widget = file.open(QIODevice::ReadOnly) ? loader.load(&file, nullptr) : nullptr;
    if (widget) return widget;
    const QString reason = file.isOpen() ? loader.errorString() : file.errorString();
    logLine(u"InterfaceFile: %@ cannot be read: %@", {place, reason});
  }
  return nullptr;
}

void connectAction(QWidget& widget, const std::weak_ptr<Object>& owner) {
  const QString selector = widget.property("action").toString();
  if (selector.isEmpty()) return;
  if (auto* const popUp = qobject_cast<PopUpButton*>(&widget)) {
    popUp->setAction(
        [=](PopUpButton& sender) { InterfaceFile::sendAction(owner, selector, &sender); });
  } else if (auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
    QObject::connect(button, &QAbstractButton::clicked, button,
                     [=] { InterfaceFile::sendAction(owner, selector, button); });
  }
}

}  // namespace

bool InterfaceFile::exists(const QString& name, const QString& folder) {
  const QStringList all = places(name, folder);
  return std::any_of(all.begin(), all.end(),
                     [](const QString& each) { return QFile::exists(each); });
}

ViewRef InterfaceFile::load(const QString& name, const QString& folder, Object& owner) {
  const ViewRef view = View::adopt(read(name, folder));
  if (!view) return nullptr;
  const QList<QWidget*> widgets = QList<QWidget*>(view->widget()->findChildren<QWidget*>())
                                  << view->widget();
  for (QWidget* const widget : widgets) {
    owner.setValueForKey(toVariant(View::of(widget)), widget->objectName());
    connectAction(*widget, owner.weak_from_this());
  }
  for (QWidget* const widget : widgets) {
    if (auto* const button = qobject_cast<KVButton*>(widget)) button->awakeFromNib();
  }
  return view;
}

void InterfaceFile::sendAction(const std::weak_ptr<Object>& target, const QString& selector,
                               QWidget* sender) {
  const ObjectRef object = target.lock();
  if (!object) return;
  try {
    if (object->classInfo().call(*object, selector, {toVariant(View::of(sender))})) return;
    logLine(u"%@ has no action %@", {object->classInfo().name(), selector});
  } catch (const std::exception& failure) {
    logLine(u"%@ %@: %@",
            {object->classInfo().name(), selector, QString::fromUtf8(failure.what())});
  }
}

}  // namespace kelvar
