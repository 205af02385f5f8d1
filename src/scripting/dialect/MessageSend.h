#pragma once

#include <QStringList>

namespace kelvar {

/// A message in brackets, `[receiver part:argument part:argument]`, with everything inside already
/// rewritten. The strings keep the blanks around them, so that lines stay where they are.
struct MessageSend {
  QString receiver;
  /// Whether the receiver can be an argument as it is, without parentheses around it.
  bool isPlainReceiver = true;
  QString selector;
  QStringList arguments;

  /// The call that stands for `receiver.part_part_(argument, argument)`:
  /// `__kelvarSend(receiver, "part_part_", argument, argument)`.
  QString javaScript() const;
};

/// The text without the blanks at its end, unless they contain a line break.
QString withoutTrailingBlanks(QStringView text);

}  // namespace kelvar
