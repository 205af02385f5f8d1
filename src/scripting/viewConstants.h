#pragma once

#include "scripting/ScriptApi.h"

namespace kelvar {

/// The numbers that operations of views, controls and windows take.
QList<ScriptApi::Constant> viewConstants();

}  // namespace kelvar
