#include <cstdio>

#include "host/Mapping.h"
#include "platform/ImageFile.h"

int main() {
  QString error;
  const kelvar::ImageRef design = kelvar::ImageFile::read("design.png", {}, &error);
  const kelvar::ImageRef photo = kelvar::ImageFile::read("phone.jpg", {}, &error);

  kelvar::Mapping mapping;
  mapping.path = {"{293.50, 447.31}", "{790.17, 262.05}", "{1644.59, 1066.26}",
                  "{1118.93, 1400.51}"};
  mapping.sampling = kelvar::warp::Sampling::Best;
  const kelvar::ImageRef mockup = mapping.layOnto(design, photo);

  if (mockup->isValid() && kelvar::ImageFile::write(*mockup, "mockup.png", &error)) return 0;
  std::fprintf(stderr, "%s\n", qPrintable(error));
  return 1;
}
