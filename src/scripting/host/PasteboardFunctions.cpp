#include "scripting/host/PasteboardFunctions.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <memory>

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

bool hasDesktop() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()); }

QVariantMap& ownContents() {
  static QVariantMap kContents;
  return kContents;
}

/// The bytes by format.
QVariantMap contents() {
  if (!hasDesktop()) return ownContents();
  QVariantMap found;
  const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
  if (!data) return found;
  if (data->hasText()) found.insert(u"text/plain"_s, data->text().toUtf8());
  for (const QString& format : data->formats()) {
    const QByteArray bytes = data->data(format);
    if (!bytes.isNull() && !found.contains(format)) found.insert(format, bytes);
  }
  return found;
}

void setContents(const QVariantMap& contents) {
  if (!hasDesktop()) {
    ownContents() = contents;
    return;
  }
  auto data = std::make_unique<QMimeData>();
  for (auto i = contents.begin(); i != contents.end(); ++i) {
    const QByteArray bytes = i.value().toByteArray();
    if (i.key() == u"text/plain") {
      data->setText(QString::fromUtf8(bytes));
    } else {
      data->setData(i.key(), bytes);
    }
  }
  QGuiApplication::clipboard()->setMimeData(data.release());
}

}  // namespace

const ClassInfo& PasteboardFunctions::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<PasteboardFunctions>("")
          .classOperation("clipboardContents", contents, "The bytes by format.")
          .classOperation("setClipboardContents", setContents, "Replaces them.");
  return kClass;
}

}  // namespace kelvar
