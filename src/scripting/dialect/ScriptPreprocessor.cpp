#include "scripting/dialect/ScriptPreprocessor.h"

#include "scripting/dialect/Parser.h"

namespace kelvar {

QStringList preprocess(const QString& script) { return Parser(script).chunks(); }

}  // namespace kelvar
