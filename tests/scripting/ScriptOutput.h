#pragma once

#include <QVariantMap>
#include <memory>

#include "scripting/runtime/ScriptRuntime.h"

namespace kelvar {

/// Runs a script to its end and collects what it prints.
class ScriptOutput {
 public:
  /// What the script prints, one line each, then the message of its failure.
  std::string of(const QString& script, const QVariantMap& globals = {}) {
    printed_.clear();
    runtime_ = std::make_unique<ScriptRuntime>(
        [this](const QString& line) { printed_ += line + QLatin1Char('\n'); });
    for (auto i = globals.begin(); i != globals.end(); ++i) runtime_->setGlobal(i.key(), i.value());
    runtime_->setTimeout(std::chrono::seconds(60));
    if (runtime_->evaluate(script, QStringLiteral("script.js"))) runtime_->run();
    if (const auto& failure = runtime_->failure()) printed_ += failure->message;
    return printed_.toStdString();
  }

  const ScriptRuntime& runtime() const { return *runtime_; }
  /// Ends the script and frees its objects.
  void end() { runtime_.reset(); }

 private:
  QString printed_;
  std::unique_ptr<ScriptRuntime> runtime_;
};

}  // namespace kelvar
