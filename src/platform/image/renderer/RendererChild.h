#pragma once

#include <QByteArray>
#include <QImage>

#include "platform/image/renderer/RendererTalk.h"

/// The renderer's side of the protocol. Every failure ends the process.
namespace kelvar::renderer {

/// Limits the processor time and the memory of this process to its two arguments, in seconds and
/// bytes, and ends it with its parent. False if there are no such arguments.
bool begin(int argc, char** argv);

/// The file to draw.
QByteArray design();

/// Ends the process if the library is gone.
void say(const Report& report);
[[noreturn]] void fail(const char* message);

/// Waits for the next request. Ends the process when there are no more.
Wanted nextWanted();

/// The image to draw, which is transparent.
QImage outputImage(const Wanted& wanted);
/// Reports `bytes` as the answer.
void sayData(const QByteArray& bytes);

}  // namespace kelvar::renderer
