#pragma once

#include <QString>
#include <optional>

namespace kelvar {

/// Where the image of a fill or a bitmap is stored.
struct ImageReference {
  /// A file of the document, such as "images/3a5f….png". Early documents omit the extension.
  QString name;
  /// The image itself as Base64, if the layer contains it instead of referring to a file.
  std::optional<QString> data = std::nullopt;
};

}  // namespace kelvar
