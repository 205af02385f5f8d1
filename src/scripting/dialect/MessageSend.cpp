#include "scripting/dialect/MessageSend.h"

#include "scripting/SelectorName.h"
#include "scripting/dialect/ScriptPreprocessor.h"

namespace kelvar {

using namespace Qt::StringLiterals;

QString MessageSend::javaScript() const {
  const QString object = withoutTrailingBlanks(receiver);
  QStringList values;
  for (const QString& argument : arguments) values += withoutTrailingBlanks(argument);
  if (values.join(QString()).isEmpty()) values.clear();
  const QString name = scriptName(selector);
  // Only a call may follow `super`.
  if (object.trimmed() == u"super") {
    return object + u'.' + name + u'(' + values.join(u", "_s) + u')';
  }
  values.prepend(u"\"%1\""_s.arg(name));
  const QString bare = isPlainReceiver ? object : u'(' + object + u')';
  return QString::fromLatin1(kSendFunction) + u'(' + bare + u", "_s + values.join(u", "_s) + u')';
}

QString withoutTrailingBlanks(QStringView text) {
  qsizetype end = text.size();
  while (end > 0 && text[end - 1].isSpace()) --end;
  return (text.sliced(end).contains(u'\n') ? text : text.first(end)).toString();
}

}  // namespace kelvar
