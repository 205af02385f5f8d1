#include "cli/jsonText.h"

#include "cli/CommandError.h"
#include "platform/QtError.h"

namespace kelvar::cli {

QByteArray jsonText(const QVariant& value, Json::Layout layout) {
  const Result<QByteArray> text = Json::write(value, layout);
  if (!text) fail(QStringLiteral("cannot be written as JSON: ") + messageOf(text.error()));
  return *text;
}

}  // namespace kelvar::cli
