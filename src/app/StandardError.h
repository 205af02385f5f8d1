#pragma once

namespace kelvar::app {

/// Whether standard error has everything that is logged: of the library what it does, and of Qt
/// what goes wrong there. Otherwise it has what the library warns the user of, alone.
void setVerbose(bool isVerbose);

/// Has what Qt logs go to standard error, a line each that begins with the program's name. An
/// application that is then made without a display ends the program with a sentence and status 1.
void logToStandardError();

}  // namespace kelvar::app
