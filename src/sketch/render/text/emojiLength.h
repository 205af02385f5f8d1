#pragma once

#include <QStringView>

namespace kelvar::render {

/// How many characters the emoji at this position of a text has, with its variation selector, skin
/// tone and what is joined to it; 0 if there is none, or one that is shown as text. The source is
/// Unicode's emoji data, version 15 (the property Emoji_Presentation), but for the pictographs
/// beyond the first plane, all of which count.
qsizetype emojiLength(QStringView text, qsizetype at);

}  // namespace kelvar::render
