#include <cstdio>

#include "mockup/Mapping.h"
#include "platform/image/ImageFile.h"

namespace {

int fail(const kelvar::Error& error) {
  std::fprintf(stderr, "%s\n", error.message.c_str());
  return 1;
}

}  // namespace

int main() {
  const auto design = kelvar::ImageFile::read("design.png", {});
  if (!design) return fail(design.error());
  const auto photo = kelvar::ImageFile::read("phone.jpg", {});
  if (!photo) return fail(photo.error());

  const kelvar::Mapping mapping{
      .corners = {{{293.50, 447.31}, {790.17, 262.05}, {1644.59, 1066.26}, {1118.93, 1400.51}}}};
  const auto mockup = mapping.compositeOnto(*design, *photo);
  if (!mockup) return fail(mockup.error());
  const auto written = kelvar::ImageFile::write(**mockup, "mockup.png");
  return written ? 0 : fail(written.error());
}
