#pragma once

#include <QGuiApplication>
#include <memory>

namespace kelvar::app {

/// What text in an SVG needs to be drawn: an application with fonts, and without a screen. Made
/// only when one of the pictures looks like an SVG, since it takes longer to start than all the
/// rest. "-" is standard input, of which nothing is consumed; an empty path is no picture. To be
/// kept until the work is done: with it goes the thread pool.
std::unique_ptr<QGuiApplication> fontsFor(const std::string& design, const std::string& photo);

}  // namespace kelvar::app
