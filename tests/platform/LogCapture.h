#pragma once

#include <QLoggingCategory>
#include <QStringList>

namespace kelvar {

/// Switches the log on for its lifetime and keeps its lines.
class LogCapture {
 public:
  LogCapture() {
    lines_.clear();
    QLoggingCategory::setFilterRules(QStringLiteral("kelvar.info=true"));
    previous_ = qInstallMessageHandler(keep);
  }
  ~LogCapture() {
    qInstallMessageHandler(previous_);
    QLoggingCategory::setFilterRules(QString());
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  const QStringList& lines() const { return lines_; }

 private:
  static void keep(QtMsgType, const QMessageLogContext& context, const QString& line) {
    if (qstrcmp(context.category, "kelvar") == 0) lines_.append(line);
  }

  static inline QStringList lines_;
  QtMessageHandler previous_ = nullptr;
};

}  // namespace kelvar
