#include "platform/SvgFile.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <QtMath>
#include <algorithm>
#include <optional>

#include "platform/FontsAtHand.h"
#include "platform/PictureLimits.h"

namespace kelvar {

namespace {

/// What the renderer may see, and what has to be known of it beforehand.
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

/// An image element that shows something from elsewhere.
bool isForeignImage(const QXmlStreamReader& reader) {
  const QXmlStreamAttributes attributes = reader.attributes();
  return reader.name() == u"image" &&
         !std::all_of(attributes.begin(), attributes.end(), [](const auto& attribute) {
           return !isReference(attribute) || isEmbeddedBitmap(attribute.value().toString());
         });
}

/// Elements other than images may refer to their like in the same file.
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
/// and comments stay behind; entities that the document type declares come out resolved.
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

QImage draw(QSvgRenderer* renderer, const QSize& size, QString* error) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) {
    *error = QStringLiteral("there is not enough memory for it");
    return {};
  }
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                         QPainter::SmoothPixmapTransform);
  renderer->render(&painter, QRectF(QPointF(0, 0), size));
  return image;
}

}  // namespace

QImage readSvg(const QByteArray& file, const std::function<QSizeF(const QSizeF&)>& vectorSize,
               QSizeF* natural, QString* error) {
  CleanSvg clean;
  if (!cleanSvg(file, &clean)) {
    *error = QStringLiteral("the SVG is damaged or cut short");
    return {};
  }
  if (!clean.tellsSize) {
    *error = QStringLiteral("the SVG tells no size; give it a viewBox, or a width and a height");
    return {};
  }
  std::optional<FontsAtHand> fonts;
  if (clean.hasText && !fonts.emplace()) {
    *error = QStringLiteral(
        "the SVG has text, which only an application with fonts "
        "(a QGuiApplication) can draw");
    return {};
  }

  QSvgRenderer renderer;
  if (!renderer.load(clean.xml)) {
    *error = QStringLiteral("the SVG is damaged");
    return {};
  }
  *natural = renderer.defaultSize();
  *error = sizeObjection(qRound64(natural->width()), qRound64(natural->height()));
  if (!error->isEmpty()) return {};
  const QSizeF wanted = vectorSize ? vectorSize(*natural) : *natural;
  // Compared as they are: an infinite or absurd size has no whole number.
  const bool absurd =
      !(wanted.width() > 0 && wanted.width() < 1e9 && wanted.height() > 0 && wanted.height() < 1e9);
  const QSize size = absurd ? QSize() : QSize(qCeil(wanted.width()), qCeil(wanted.height()));
  *error = sizeObjection(size.width(), size.height());
  return error->isEmpty() ? draw(&renderer, size, error) : QImage();
}

}  // namespace kelvar
