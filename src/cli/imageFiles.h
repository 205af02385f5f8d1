#pragma once

#include <QSizeF>
#include <string>

#include "platform/image/Image.h"

namespace kelvar::cli {

/// Image files as commands name them: a path, or "-" for standard input and output. All throw a
/// `CommandError`.

/// `rasterizationSize` applies to vector images; if empty, they are drawn at their natural size.
ImageRef readImage(const std::string& path, const QSizeF& rasterizationSize);

/// Checks, before any work is done, that an image can be written to `output`. `otherExtensions`,
/// such as "sketch, ", begins the list in the message.
void checkImageOutput(const std::string& output, const char* otherExtensions = "");

/// Lifts the time limit: immediately if the output is a stream, else when the file is complete.
void writeImage(const Image& image, const std::string& output);

/// Standard output can take a report or a file, but not both.
void checkJsonOutput(bool json, const std::string& output);

}  // namespace kelvar::cli
