#include "cli/fonts.h"

#include <CLI/CLI.hpp>

#include "platform/files/FileName.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar::cli {

void addFonts(CLI::App* command) {
  const auto add = [](const std::string& folder) {
    const auto added = ArtboardRenderer::addFonts(fileNameFromBytes(folder));
    if (!added) throw CLI::ValidationError("--fonts", added.error().message);
  };
  command
      ->add_option_function<std::string>("--fonts", add,
                                         "A folder with more fonts to draw documents with")
      ->type_name("DIR");
}

}  // namespace kelvar::cli
