#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace kelvar {

/// The picture in a PNG file, every kind that there is, as premultiplied BGRA in sRGB. Null and
/// the reason in `*error` when the file is cut short, damaged (checksums are compared; only those
/// of chunks that the pixels do not depend on are forgiven) or beyond ImageFile's limits.
///
/// What most files are, eight bits a channel and not interlaced, takes a fast path: one thread
/// inflates with ISA-L while the caller's undoes the filters and converts. Beside `file` and the
/// picture it holds under two megabytes. The rest goes through libspng.
QImage readPng(const QByteArray& file, QString* error);

}  // namespace kelvar
