#pragma once

#include <QtGlobal>
#include <cstdint>

/// The binary format: "bplist00", the objects, a table of their offsets, and a trailer of 32 bytes
/// (6 unused, the sizes of an offset and of a reference in one byte each, then the number of
/// objects, the index of the root and the offset of the table in 8 bytes each). All numbers are
/// big-endian. The upper half of an object's first byte is its kind, the lower half a count; 15
/// means that the count follows as an integer object.
namespace kelvar::bplist {

enum Kind : uint8_t {
  kSimple = 0x0,
  kInteger = 0x1,
  kReal = 0x2,
  kDate = 0x3,
  kBytes = 0x4,
  kAscii = 0x5,
  kUtf16 = 0x6,
  kReference = 0x8,
  kList = 0xa,
  kMap = 0xd
};
constexpr uint8_t kFalse = 0x08;
constexpr uint8_t kTrue = 0x09;
constexpr qsizetype kHeaderSize = 8;
constexpr qsizetype kTrailerSize = 32;

}  // namespace kelvar::bplist
