#include "scripting/NSURL.h"

#include <functional>
#include <memory>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&NSURL::staticClassInfo);

/// Invalid for a string that is not a valid URL.
QVariant URLWithString(const QString& string) {
  const QUrl url(string, QUrl::StrictMode);
  return url.isValid() ? QVariant(url) : QVariant();
}

std::shared_ptr<NSURL> initWithString(const QString& string) {
  const QVariant url = URLWithString(string);
  return url.isValid() ? std::make_shared<NSURL>(url) : nullptr;
}

QVariant URLRelativeTo(const QString& string, const QUrl& base) {
  const QUrl url(string, QUrl::StrictMode);
  return url.isValid() ? QVariant(base.resolved(url)) : QVariant();
}

QUrl withPath(const QUrl& url, const QString& path) {
  QUrl changed = url;
  changed.setPath(path);
  return changed;
}

/// Without the slash that ends the path of a folder.
QString pathOf(const QUrl& url) {
  const QString path = url.path();
  return path.size() > 1 && path.endsWith(u'/') ? path.chopped(1) : path;
}

QString parentOf(const QString& path) { return path.left(path.lastIndexOf(u'/') + 1); }

QUrl appending(const QUrl& url, const QString& component) {
  const QString path = pathOf(url);
  return withPath(url, path.endsWith(u'/') ? path + component : path + u'/' + component);
}

QString extensionOf(const QUrl& url) {
  const QString name = pathOf(url).section(u'/', -1);
  const qsizetype dot = name.lastIndexOf(u'.');
  return dot > 0 ? name.sliced(dot + 1) : QStringLiteral("");
}

QUrl withoutExtension(const QUrl& url) {
  const QString extension = extensionOf(url);
  return extension.isEmpty() ? url : withPath(url, pathOf(url).chopped(extension.size() + 1));
}

QStringList componentsOf(const QUrl& url) {
  QStringList components = url.path().split(u'/', Qt::SkipEmptyParts);
  if (url.path().startsWith(u'/')) components.prepend(QStringLiteral("/"));
  return components;
}

QVariant port(const QUrl& url) { return url.port() < 0 ? QVariant() : QVariant(url.port()); }
QString query(const QUrl& url) {
  return url.hasQuery() ? url.query(QUrl::FullyEncoded) : QString();
}
QString fragment(const QUrl& url) { return url.hasFragment() ? url.fragment() : QString(); }

/// An operation on the URL itself.
template <auto function>
auto of(const NSURL& self) {
  return std::invoke(function, self.url());
}

}  // namespace

const ClassInfo& NSURL::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<NSURL>("NSURL")
          .initializer("initWithString:", initWithString,
                       "Creates a URL; nil if the string is not a valid one.")
          .initializer(
              "initFileURLWithPath:",
              [](const QString& path) {
                return std::make_shared<NSURL>(QUrl::fromLocalFile(path));
              },
              "Creates the URL of a file.")
          .classOperation("URLWithString:", URLWithString,
                          "Creates a URL; nil if the string is not a valid one.")
          .classOperation("URLWithString:relativeToURL:", URLRelativeTo,
                          "Resolves a relative URL; nil if the string is not a valid one.")
          .classOperation(
              "fileURLWithPath:", [](const QString& path) { return QUrl::fromLocalFile(path); },
              "Creates the URL of a file.")
          .classOperation(
              "fileURLWithPath:isDirectory:",
              [](const QString& path, bool isFolder) {
                const bool adds = isFolder && !path.endsWith(u'/');
                return QUrl::fromLocalFile(adds ? path + u'/' : path);
              },
              "Creates the URL of a file or folder.")
          .property("absoluteString", &NSURL::description, "The whole URL, percent-encoded.")
          .property("absoluteURL", &NSURL::url, "The URL itself.")
          .property(
              "scheme", [](const NSURL& self) { return self.url_.scheme(); },
              "The scheme, such as \"https\".")
          .property(
              "host", [](const NSURL& self) { return self.url_.host(); }, "The host name.")
          .property("port", of<port>, "The port; nil if the URL has none.")
          .property(
              "user", [](const NSURL& self) { return self.url_.userName(); }, "The user name.")
          .property("path", of<pathOf>, "The path, without a slash at its end.")
          .property("relativePath", of<pathOf>, "The same as the path.")
          .property("query", of<query>, "What follows the question mark; nil without one.")
          .property("fragment", of<fragment>, "What follows the number sign; nil without one.")
          .property("pathComponents", of<componentsOf>, "The path's components.")
          .property(
              "lastPathComponent",
              [](const NSURL& self) { return pathOf(self.url_).section(u'/', -1); },
              "The path's last component.")
          .property("pathExtension", of<extensionOf>, "The extension of the last component.")
          .property(
              "isFileURL", [](const NSURL& self) { return self.url_.isLocalFile(); },
              "Whether it is the URL of a file.")
          .operation(
              "URLByAppendingPathComponent:",
              [](const NSURL& self, const QString& component) {
                return appending(self.url_, component);
              },
              "Returns the URL of something in this folder.")
          .operation(
              "URLByAppendingPathExtension:",
              [](const NSURL& self, const QString& extension) {
                return withPath(self.url_, pathOf(self.url_) + u'.' + extension);
              },
              "Returns the URL with an extension added.")
          .operation(
              "URLByDeletingLastPathComponent",
              [](const NSURL& self) { return withPath(self.url_, parentOf(pathOf(self.url_))); },
              "Returns the URL of the folder that contains this one.")
          .operation("URLByDeletingPathExtension", of<withoutExtension>,
                     "Returns the URL without its extension.");
  return kClass;
}

}  // namespace kelvar
