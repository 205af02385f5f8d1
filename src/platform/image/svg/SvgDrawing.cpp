#include "platform/image/svg/SvgDrawing.h"

#include <QPainter>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <algorithm>

namespace kelvar {

namespace {

/// The part of an SVG that the renderer may see, and what must be known about it beforehand.
struct CleanSvg {
  QByteArray xml;
  bool tellsSize = false;
  bool hasText = false;
};

bool isEmbeddedBitmap(const QString& address) {
  const auto marker = QStringLiteral("base64,");
  const qsizetype at = address.lastIndexOf(marker);
  if (!address.startsWith(u"data:") || at < 0) return false;
  const QByteArray head = QByteArray::fromBase64(address.mid(at + marker.size(), 32).toLatin1());
  return head.startsWith("\x89PNG") || head.startsWith("\xff\xd8") || head.startsWith("GIF8") ||
         (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP");
}

bool isReference(const QXmlStreamAttribute& attribute) {
  return attribute.name().compare(u"href", Qt::CaseInsensitive) == 0;
}

/// An image element that refers to something other than an embedded bitmap.
bool isForeignImage(const QXmlStreamReader& reader) {
  const QXmlStreamAttributes attributes = reader.attributes();
  return reader.name() == u"image" &&
         !std::all_of(attributes.begin(), attributes.end(), [](const auto& attribute) {
           return !isReference(attribute) || isEmbeddedBitmap(attribute.value().toString());
         });
}

/// Elements other than images may refer to elements of the same file.
QXmlStreamAttributes cleanAttributes(const QXmlStreamReader& reader) {
  QXmlStreamAttributes attributes = reader.attributes();
  if (reader.name() == u"image") return attributes;
  attributes.removeIf([](const QXmlStreamAttribute& attribute) {
    return isReference(attribute) && !attribute.value().trimmed().startsWith(u'#');
  });
  return attributes;
}

void copyStartElement(const QXmlStreamReader& reader, bool isRoot, QXmlStreamWriter* writer,
                      CleanSvg* clean) {
  const QXmlStreamAttributes attributes = cleanAttributes(reader);
  if (isRoot) {
    clean->tellsSize =
        attributes.hasAttribute(u"viewBox"_qs) ||
        (attributes.hasAttribute(u"width"_qs) && attributes.hasAttribute(u"height"_qs));
  }
  clean->hasText = clean->hasText || reader.name() == u"text" || reader.name() == u"textArea";
  writer->writeStartElement(reader.qualifiedName().toString());
  for (const auto& declaration : reader.namespaceDeclarations()) {
    const QString prefix = declaration.prefix().toString();
    writer->writeAttribute(prefix.isEmpty() ? u"xmlns"_qs : u"xmlns:"_qs + prefix,
                           declaration.namespaceUri().toString());
  }
  for (const auto& attribute : attributes) {
    writer->writeAttribute(attribute.qualifiedName().toString(), attribute.value().toString());
  }
}

/// Copies elements, attributes and text. Processing instructions (style sheets), the document type
/// and comments are dropped; entities that the document type declares are expanded.
bool cleanSvg(const QByteArray& file, CleanSvg* clean) {
  QXmlStreamReader reader(file);
  QXmlStreamWriter writer(&clean->xml);
  bool isRoot = true;
  while (!reader.atEnd()) {
    switch (reader.readNext()) {
      case QXmlStreamReader::StartElement:
        if (isForeignImage(reader)) {
          reader.skipCurrentElement();
          break;
        }
        copyStartElement(reader, isRoot, &writer, clean);
        isRoot = false;
        break;
      case QXmlStreamReader::EndElement:
        writer.writeEndElement();
        break;
      case QXmlStreamReader::Characters:
        writer.writeCharacters(reader.text().toString());
        break;
      default:
        break;
    }
  }
  return !reader.hasError();
}

}  // namespace

Result<void> SvgDrawing::load(const QByteArray& file) {
  CleanSvg clean;
  if (!cleanSvg(file, &clean)) {
    return failure(Error::Kind::Damaged, "the SVG is damaged or cut short");
  }
  if (!clean.tellsSize) {
    return failure(Error::Kind::Unsupported,
                   "the SVG tells no size; give it a viewBox, or a width and a height");
  }
  if (clean.hasText) fonts_.emplace();
  if (renderer_.emplace().load(clean.xml)) return {};
  return failure(Error::Kind::Damaged, "the SVG is damaged");
}

void SvgDrawing::draw(QImage* image) {
  QPainter painter(image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                         QPainter::SmoothPixmapTransform);
  renderer_->render(&painter, QRectF(QPointF(0, 0), image->size()));
}

}  // namespace kelvar
