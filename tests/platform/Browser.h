#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace kelvar {

/// Acts as the user's default program for some URL schemes during its lifetime.
class Browser : public QObject {
  Q_OBJECT

 public:
  explicit Browser(std::initializer_list<const char*> schemes) {
    for (const char* scheme : schemes) schemes_.append(QLatin1String(scheme));
    for (const QString& scheme : schemes_) QDesktopServices::setUrlHandler(scheme, this, "open");
  }
  ~Browser() override {
    for (const QString& scheme : schemes_) QDesktopServices::unsetUrlHandler(scheme);
  }

  QList<QUrl> opened;

  Q_SLOT void open(const QUrl& url) { opened.append(url); }

 private:
  QStringList schemes_;
};

}  // namespace kelvar
