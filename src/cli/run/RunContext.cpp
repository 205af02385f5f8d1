#include "cli/run/RunContext.h"

#include "platform/files/FileName.h"
#include "runtime/Conversion.h"

namespace kelvar::cli {

using namespace Qt::StringLiterals;

QVariantMap RunContext::of(const QString& script, const PluginCommandRef& command) const {
  const QString path = absoluteFileName(script);
  return {{u"document"_s, toVariant(document)},
          {u"selection"_s, selection},
          {u"plugin"_s, toVariant(plugin)},
          {u"command"_s, toVariant(command ? command : PluginCommand::ofScript(path))},
          {u"scriptPath"_s, path},
          {u"scriptURL"_s, QUrl::fromLocalFile(path)},
          {u"arguments"_s, arguments}};
}

QVariantMap RunContext::of(const PluginCommandRef& listener, const QString& action) const {
  QVariantMap context = of(listener->script(), listener);
  QVariantMap details{{u"document"_s, toVariant(document)}};
  if (action.startsWith(u"SelectionChanged"_s)) {
    details.insert(u"oldSelection"_s, QVariantList());
    details.insert(u"newSelection"_s, selection);
  }
  context.insert(u"action"_s, action);
  context.insert(u"actionContext"_s, details);
  return context;
}

}  // namespace kelvar::cli
