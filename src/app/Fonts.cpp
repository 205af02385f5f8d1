#include "app/Fonts.h"

#include <cctype>
#include <cstdio>

namespace kelvar::app {
namespace {

int firstByte(const std::string& path) {
  if (path == "-") return std::ungetc(std::getc(stdin), stdin);
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
  return file ? std::getc(file.get()) : EOF;
}

/// Text begins with a tag, a blank or a byte order mark; no bitmap does.
bool looksLikeSvg(const std::string& path) {
  constexpr int kByteOrderMark = 0xef;
  const int first = path.empty() ? EOF : firstByte(path);
  return first == '<' || first == kByteOrderMark || (first != EOF && std::isspace(first) != 0);
}

}  // namespace

std::unique_ptr<QGuiApplication> fontsFor(const std::string& design, const std::string& photo) {
  if (!looksLikeSvg(design) && !looksLikeSvg(photo)) return nullptr;
  static char name[] = "kelvar", option[] = "-platform", platform[] = "offscreen";
  static char* arguments[] = {name, option, platform, nullptr};
  static int count = 3;
  return std::make_unique<QGuiApplication>(count, arguments);
}

}  // namespace kelvar::app
