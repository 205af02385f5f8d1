#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <vector>

#include "scripting/runtime/ScriptRuntime.h"

namespace kelvar {

/// An expression of a script, or the body of a function if it returns, and the value as text:
/// "threw " and the error where it throws.
struct ScriptCase {
  const char* script;
  const char* result;
};

/// Evaluates all of them in one runtime.
inline void expectResults(const std::vector<ScriptCase>& cases) {
  QString printed;
  ScriptRuntime runtime([&](const QString& line) { printed += line + u'\n'; });
  for (const ScriptCase& each : cases) {
    const QString script = QString::fromUtf8(each.script);
    const QString body =
        script.contains(u"return ") ? script : QStringLiteral("return (%1);").arg(script);
    printed.clear();
    runtime.evaluate(
        QStringLiteral("print((() => { try { return String((() => {\n%1\n})()); } catch (e) { "
                       "return 'threw ' + e; } })());")
            .arg(body),
        QStringLiteral("case.js"));
    ASSERT_FALSE(runtime.failure())
        << each.script << ": " << runtime.failure()->message.toStdString();
    EXPECT_EQ(printed.toStdString(), std::string(each.result) + "\n") << each.script;
  }
}

}  // namespace kelvar
