#pragma once

namespace kelvar::cli {

/// If set, standard error gets the whole log: the library's messages and Qt's warnings. Otherwise,
/// it gets only the library's warnings to the user.
void setVerbose(bool isVerbose);

/// Sends Qt's log to standard error, each line prefixed with the program's name. From then on, an
/// application that is created without a display ends the program with an error message and status
/// 1.
void logToStandardError();

}  // namespace kelvar::cli
