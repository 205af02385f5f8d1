#include "platform/image/ImageFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QBuffer>
#include <QColorSpace>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QTemporaryDir>
#include <cmath>
#include <csignal>
#include <limits>
#include <random>
#include <vector>

#include "platform/QtError.h"
#include "platform/image/VectorFile.h"

/// Fontconfig keeps what it has found until the process ends.
extern "C" KELVAR_EXPORT const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }

namespace kelvar {
namespace {

QImage noise(int width, int height, QImage::Format format) {
  std::mt19937 random(5);
  QImage image(width, height, QImage::Format_ARGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image.setPixel(x, y, uint32_t(random()));
  }
  return image.convertToFormat(format);
}

/// Four colored quarters, so that every turn shows.
QImage quarters() {
  QImage image(32, 16, QImage::Format_RGB32);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 32; ++x) {
      image.setPixel(x, y, qRgb(x < 16 ? 20 : 220, y < 8 ? 20 : 220, 90));
    }
  }
  return image;
}

QByteArray encoded(const QImage& image, const char* format) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(image.save(&buffer, format, 95));
  return buffer.data();
}

/// Largest difference of a channel, -1 when the sizes differ.
int distance(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return -1;
  int most = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
      for (int shift = 0; shift < 32; shift += 8) {
        most = std::max(most, std::abs(int(p >> shift & 255) - int(q >> shift & 255)));
      }
    }
  }
  return most;
}

class ImageFileTest : public testing::Test {
 protected:
  QString path(const QString& name) const { return folder_.filePath(name); }

  QString put(const QString& name, const QByteArray& bytes) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }
  QByteArray bytesOf(const QString& name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  QImage read(const QString& name, const ImageFile::ReadOptions& options = {}) {
    return taken(ImageFile::read(path(name), options))->pixels();
  }
  /// The image, or an invalid one, and the message in `error_`.
  ImageRef taken(const Result<ImageRef>& image) {
    error_ = image ? QString() : messageOf(image.error());
    return image.value_or(std::make_shared<Image>());
  }
  bool write(const Image& image, const QString& file) {
    const auto written = ImageFile::write(image, file);
    error_ = written ? QString() : messageOf(written.error());
    return written.has_value();
  }
  QStringList files() const {
    return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }

  QTemporaryDir folder_;
  QString error_;
};

/// For the time of its life the process may not do what everybody may not do.
class AsNobody {
 public:
  AsNobody() {
    if (::geteuid() == 0) dropped_ = ::seteuid(65534) == 0;
  }
  ~AsNobody() {
    if (dropped_ && ::seteuid(0) != 0) std::abort();
  }

 private:
  bool dropped_ = false;
};

TEST_F(ImageFileTest, ReportsBadInput) {
  const QByteArray png = encoded(noise(40, 30, QImage::Format_ARGB32), "png");
  const QByteArray jpeg = encoded(noise(40, 30, QImage::Format_RGB32), "jpg");
  const QByteArray webp = encoded(noise(40, 30, QImage::Format_ARGB32), "webp");
  QByteArray badPng = png, hugeJpeg = jpeg, badJpeg = jpeg, badWebp = webp;
  badPng[60] = char(badPng[60] ^ 1);
  const qsizetype frame = hugeJpeg.indexOf("\xff\xc0") + 5;
  hugeJpeg.replace(frame, 4, QByteArray("\xea\x60\xea\x60", 4));
  badJpeg.replace(jpeg.size() / 2, 20, QByteArray(10, '\xff') + QByteArray(10, '\xd9'));
  badWebp.replace(badWebp.indexOf("\x9d\x01\x2a"), 3, "abc");
  const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' ";

  struct Row {
    const char* name;
    QByteArray bytes;
    const char16_t* phrase;
  };
  const Row kTable[] = {
      {"empty.png", "", u"empty"},
      {"text.png", "These are words and no picture.\n", u"not a PNG, JPEG, WebP or SVG"},
      {"page.svg", "<html><body/></html>", u"not a PNG, JPEG, WebP or SVG"},
      {"signature.png", png.left(8), u"cut short"},
      {"header.png", png.left(30), u"cut short"},
      {"half.png", png.left(png.size() / 2), u"cut short"},
      {"end.png", png.chopped(1), u"cut short"},
      {"bit.png", badPng, u"damaged"},
      {"start.jpg", jpeg.left(3), u"cut short"},
      {"half.jpg", jpeg.left(jpeg.size() / 2), u"cut short"},
      {"end.jpg", jpeg.chopped(2), u"cut short"},
      {"bad.jpg", badJpeg, u"the JPEG is"},
      {"huge.jpg", hugeJpeg, u"60000 x 60000"},
      {"start.webp", webp.left(14), u"the WebP is"},
      {"half.webp", webp.left(webp.size() / 2), u"cut short"},
      {"bad.webp", badWebp, u"the WebP is damaged"},
      {"half.svg", svg + "width='9' height='9'><rect", u"cut short"},
      {"nosize.svg", svg + "><rect width='9' height='9'/></svg>", u"tells no size"},
      {"zero.svg", svg + "width='0' height='0'><rect/></svg>", u"0 x 0"},
      {"huge.svg", svg + "width='60000' height='60000'/>", u"60000 x 60000"},
      {"infinite.svg", svg + "width='1e300' height='5'/>", u"cannot read"}};
  for (const Row& row : kTable) {
    const QString name = QString::fromLatin1(row.name);
    put(name, row.bytes);
    EXPECT_TRUE(read(name).isNull()) << row.name;
    EXPECT_TRUE(error_.startsWith(QStringLiteral("cannot read ") + path(name))) << row.name;
    EXPECT_TRUE(error_.contains(QStringView(row.phrase))) << qPrintable(error_);
  }
  EXPECT_TRUE(read(QStringLiteral("missing.png")).isNull());
  EXPECT_TRUE(error_.endsWith(u"there is no such file")) << qPrintable(error_);
  EXPECT_TRUE(read(QStringLiteral(".")).isNull());
  EXPECT_TRUE(error_.contains(u"it is a folder")) << qPrintable(error_);
}

/// From bytes without anything behind them, so that the address sanitizer sees a read past the end.
Result<ImageRef> readExactly(const QByteArray& file) {
  const std::vector<char> exact(file.begin(), file.end());
  return ImageFile::fromBytes(QByteArray::fromRawData(exact.data(), qsizetype(exact.size())), {});
}

TEST(ImageCodecsTest, TruncationIsAlwaysAnError) {
  for (const char* format : {"jpg", "webp"}) {
    const QByteArray whole = encoded(quarters(), format);
    for (qsizetype size = 0; size < whole.size(); ++size) {
      const auto image = readExactly(whole.left(size));
      ASSERT_FALSE(image) << format << " cut to " << size;
      ASSERT_FALSE(image.error().message.empty());
    }
  }
}

TEST(ImageCodecsTest, FlippedBitsNeverCrash) {
  for (const char* format : {"jpg", "webp"}) {
    QByteArray flipped = encoded(quarters(), format);
    for (qsizetype bit = 0; bit < flipped.size() * 8; ++bit) {
      const auto flip = [&] { flipped[bit / 8] = char(flipped[bit / 8] ^ 1 << bit % 8); };
      flip();
      const auto image = readExactly(flipped);
      ASSERT_TRUE(!image || (*image)->isValid()) << format << " bit " << bit;
      flip();
    }
  }
}

TEST_F(ImageFileTest, NamesPermissionErrors) {
  ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFile::Permissions(0x7755)));
  const QString secret = put(QStringLiteral("secret.png"), encoded(quarters(), "png"));
  ASSERT_TRUE(QFile::setPermissions(secret, QFile::Permissions()));
  const Image image(quarters());
  const AsNobody nobody;
  if (::geteuid() != 65534) QFile::setPermissions(folder_.path(), QFile::Permissions(0x5555));
  EXPECT_TRUE(read(QStringLiteral("secret.png")).isNull());
  EXPECT_TRUE(error_.contains(u"permission", Qt::CaseInsensitive)) << qPrintable(error_);
  for (const auto& name : {QStringLiteral("secret.png"), QStringLiteral("new.png")}) {
    EXPECT_FALSE(write(image, path(name)));
    EXPECT_TRUE(error_.contains(u"permission", Qt::CaseInsensitive)) << qPrintable(error_);
  }
}

TEST_F(ImageFileTest, DetectsFormatFromContent) {
  for (const char* format : {"png", "jpg", "webp"}) {
    for (const auto depth : {QImage::Format_RGB32, QImage::Format_Grayscale8}) {
      const QByteArray bytes = encoded(quarters().convertToFormat(depth), format);
      for (const auto& name :
           {QStringLiteral("a.png"), QStringLiteral("a.jpg"), QStringLiteral("a")}) {
        put(name, bytes);
        EXPECT_EQ(distance(read(name), QImage::fromData(bytes)), 0) << format << qPrintable(error_);
      }
    }
  }
}

TEST_F(ImageFileTest, RoundTripsEveryFormat) {
  const Image soft(noise(65, 40, QImage::Format_ARGB32_Premultiplied));
  const Image opaque(quarters());
  struct Row {
    const char16_t* name;
    const Image& image;
    int tolerance;
  };
  const Row kTable[] = {{u"a.png", soft, 0},    {u"a.PNG", opaque, 0}, {u"a.webp", soft, 0},
                        {u"b.WebP", opaque, 0}, {u"a.jpg", opaque, 3}, {u"a.JPEG", opaque, 3}};
  for (const Row& row : kTable) {
    const QString name = QString::fromUtf16(row.name);
    EXPECT_TRUE(ImageFile::checkWritable(path(name)));
    ASSERT_TRUE(write(row.image, path(name))) << qPrintable(error_);
    const ImageRef back = taken(ImageFile::read(path(name), {}));
    ASSERT_TRUE(back->isValid()) << qPrintable(error_);
    EXPECT_EQ(back->size(), QSizeF(row.image.pixels().size()));
    EXPECT_LE(unsigned(distance(back->pixels(), row.image.pixels())), unsigned(row.tolerance))
        << qPrintable(name);
  }
  EXPECT_EQ(bytesOf(QStringLiteral("a.webp")).left(4), "RIFF");
}

TEST_F(ImageFileTest, JpegIsFlattenedOnWhite) {
  QImage glass(16, 16, QImage::Format_ARGB32_Premultiplied);
  glass.fill(qRgba(64, 0, 0, 128));
  ASSERT_TRUE(write(Image(glass), path(QStringLiteral("g.jpg"))));
  QImage expected(16, 16, QImage::Format_RGB32);
  expected.fill(qRgb(191, 127, 127));
  EXPECT_LE(unsigned(distance(read(QStringLiteral("g.jpg")), expected)), 2u);
}

TEST_F(ImageFileTest, UnwritableOutputIsReportedFirstAndLeavesNothing) {
  QDir(folder_.path()).mkdir(QStringLiteral("folder.png"));
  put(QStringLiteral("file"), "x");
  const QStringList before = files();
  struct Row {
    const char16_t* name;
    const char16_t* phrase;
  };
  constexpr Row kTable[] = {{u"out/x.png", u"/out does not exist"},
                            {u"file/x.png", u"is not a folder"},
                            {u"folder.png", u"there is a folder of that name"},
                            {u"x.gif", u".png, .jpg, .jpeg and .webp"},
                            {u"x", u".png, .jpg, .jpeg and .webp"}};
  for (const Row& row : kTable) {
    const QString target = path(QString::fromUtf16(row.name));
    const auto writable = ImageFile::checkWritable(target);
    EXPECT_FALSE(write(Image(quarters()), target));
    ASSERT_FALSE(writable);
    EXPECT_EQ(messageOf(writable.error()), error_);
    EXPECT_TRUE(error_.startsWith(QStringLiteral("cannot write ") + target));
    EXPECT_TRUE(error_.contains(QStringView(row.phrase))) << qPrintable(error_);
  }
  EXPECT_FALSE(write(Image(), path(QStringLiteral("none.png"))));
  const Image wide(QImage(17000, 2, QImage::Format_ARGB32_Premultiplied));
  EXPECT_FALSE(write(wide, path(QStringLiteral("wide.webp"))));
  EXPECT_TRUE(error_.contains(u"16383")) << qPrintable(error_);
  EXPECT_EQ(files(), before);
}

TEST_F(ImageFileTest, FullDiskKeepsExistingFile) {
  const Image image(noise(300, 200, QImage::Format_ARGB32_Premultiplied));
  for (const auto& name :
       {QStringLiteral("kept.png"), QStringLiteral("kept.jpg"), QStringLiteral("kept.webp")}) {
    put(name, "kept");
    const QStringList before = files();
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit little{5000, old.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &little);
    const bool written = write(image, path(name));
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(written);
    EXPECT_EQ(error_, QStringLiteral("cannot write %1: File too large").arg(path(name)));
    EXPECT_EQ(bytesOf(name), "kept");
    EXPECT_EQ(files(), before);
    EXPECT_TRUE(write(image, path(name))) << qPrintable(error_);
    EXPECT_EQ(files(), before);
  }
  EXPECT_FALSE(write(image, QStringLiteral("/dev/full")));
  EXPECT_TRUE(error_.endsWith(u"No space left on device")) << qPrintable(error_);
}

TEST_F(ImageFileTest, StandardStreamsCarryPng) {
  const Image image(noise(70, 50, QImage::Format_ARGB32_Premultiplied));
  const QByteArray name = path(QStringLiteral("stream")).toLocal8Bit();
  const auto redirected = [&](int stream, int flags, const auto& action) {
    const int saved = ::dup(stream), file = ::open(name.constData(), flags, 0600);
    ::dup2(file, stream);
    action();
    ::dup2(saved, stream);
    ::close(saved);
    ::close(file);
  };
  bool written = false;
  std::fflush(stdout);
  redirected(1, O_WRONLY | O_CREAT, [&] { written = write(image, QStringLiteral("-")); });
  ASSERT_TRUE(written) << qPrintable(error_);
  ImageRef back;
  redirected(0, O_RDONLY, [&] { back = taken(ImageFile::read(QStringLiteral("-"), {})); });
  EXPECT_EQ(back->pixels(), image.pixels()) << qPrintable(error_);
}

TEST_F(ImageFileTest, AppliesEveryExifOrientation) {
  const QByteArray plain = encoded(quarters(), "jpg");
  for (char orientation = 1; orientation <= 8; ++orientation) {
    QByteArray exif("Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\0\0\0\0\0\0\0", 32);
    exif[25] = orientation;
    const QByteArray segment = QByteArray("\xff\xe1\0", 3) + char(exif.size() + 2) + exif;
    const QString file = put(QStringLiteral("o.jpg"), plain.left(2) + segment + plain.mid(2));
    QImageReader reader(file);
    reader.setAutoTransform(true);
    const QImage expected = reader.read();
    ASSERT_EQ(expected.width(), orientation < 5 ? 32 : 16);
    EXPECT_EQ(distance(read(QStringLiteral("o.jpg")), expected), 0) << int(orientation);
  }
}

TEST_F(ImageFileTest, ConvertsJpegAndWebPProfiles) {
  QImage wide(16, 16, QImage::Format_RGB32);
  wide.fill(qRgb(100, 150, 200));
  wide.setColorSpace(QColorSpace::AdobeRgb);
  const QImage expected = wide.convertedToColorSpace(QColorSpace::SRgb);
  for (const char* format : {"png", "jpg", "webp"}) {
    put(QStringLiteral("profile"), encoded(wide, format));
    EXPECT_LE(unsigned(distance(read(QStringLiteral("profile")), expected)), 4u) << format;
  }
}

TEST_F(ImageFileTest, RendersSvgAtRequestedSize) {
  put(QStringLiteral("a.svg"),
      "<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY blue '#0000ff'>]>"
      "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 40 20'>"
      "<rect width='20' height='20' fill='&blue;'/></svg>");
  QSizeF natural;
  const ImageFile::ReadOptions options{.rasterizationSize = [&](const QSizeF& size) {
    natural = size;
    return size * 2.5 - QSizeF(0.5, 0.5);
  }};
  const ImageRef image = taken(ImageFile::read(path(QStringLiteral("a.svg")), options));
  ASSERT_TRUE(image->isValid()) << qPrintable(error_);
  EXPECT_EQ(natural, QSizeF(40, 20));
  EXPECT_EQ(image->size(), QSizeF(40, 20));
  EXPECT_EQ(image->pixels().size(), QSize(100, 50));
  EXPECT_EQ(image->pixels().pixel(48, 25), qRgb(0, 0, 255));
  EXPECT_EQ(image->pixels().pixel(51, 45), 0u);
  EXPECT_EQ(read(QStringLiteral("a.svg")).size(), QSize(40, 20));
  constexpr double kBad[] = {0,
                             -5,
                             40000,
                             1e300,
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
  for (const double side : kBad) {
    const ImageFile::ReadOptions bad{[&](const QSizeF&) { return QSizeF(side, 10); }};
    EXPECT_TRUE(read(QStringLiteral("a.svg"), bad).isNull()) << side;
  }
}

TEST_F(ImageFileTest, RendersSvgTextWithAndWithoutApplication) {
  put(QStringLiteral("t.svg"),
      "<svg xmlns='http://www.w3.org/2000/svg' width='40' height='40'>"
      "<text y='40' font-size='50'>MM</text></svg>");
  QImage blank(40, 40, QImage::Format_ARGB32_Premultiplied);
  blank.fill(Qt::transparent);
  EXPECT_GT(distance(read(QStringLiteral("t.svg")), blank), 200) << qPrintable(error_);
  if (QCoreApplication::instance()) GTEST_SKIP();
  int count = 0;
  const QCoreApplication plain(count, nullptr);
  EXPECT_GT(distance(read(QStringLiteral("t.svg")), blank), 200) << qPrintable(error_);
}

QByteArray repeated(const char* text, int times) { return QByteArray(text).repeated(times); }

/// "x,y x,y …", all over a square of 400.
QByteArray scattered(int points) {
  QByteArray out;
  std::mt19937 random(7);
  for (int i = 0; i < points; ++i) {
    out += QByteArray::number(int(random() % 400)) + ',' + QByteArray::number(int(random() % 400)) +
           ' ';
  }
  return out;
}

TEST(SvgFileTest, EveryDesignRendersOrFailsWithMessage) {
  const QByteArray begin =
      "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
      "width='400' height='400'>";
  const QByteArray entity = "<!DOCTYPE svg [<!ENTITY a '" + QByteArray(4000, 'x') + "'>]>" + begin;
  const QByteArray line = "<path fill='none' stroke='red' ";
  QByteArray attributes, uses = "<defs><rect id='u0' width='9' height='9'/>";
  for (int i = 0; i < 90000; ++i) attributes += "a" + QByteArray::number(i) + "='1' ";
  for (int i = 1; i < 40; ++i) {
    const QByteArray use = "<use xlink:href='#u" + QByteArray::number(i - 1) + "'/>";
    uses += "<g id='u" + QByteArray::number(i) + "'>" + use + use + "</g>";
  }
  uses += "</defs><use xlink:href='#u39'/>";

  struct Row {
    const char* what;
    QByteArray svg;
    bool isDrawn = false;
  };
  const Row kTable[] = {
      {"entities in text", entity + "<text>" + repeated("&a;", 150000) + "</text></svg>"},
      {"entities in an attribute", entity + "<g id='" + repeated("&a;", 150000) + "'/></svg>"},
      {"short dashes on a long line", begin + line +
                                          "stroke-width='9' stroke-dasharray='.1,.1' d='M" +
                                          scattered(15000) + "'/></svg>"},
      {"wide round joins", begin + line + "stroke-width='3000' stroke-linejoin='round' d='M" +
                               scattered(30000) + "'/></svg>"},
      {"a megabyte of attributes", begin + "<rect " + attributes + "/></svg>"},
      {"many fills",
       begin + repeated("<rect width='400' height='400' fill='red' opacity='.5'/>", 100000) +
           "</svg>"},
      {"many colors of a gradient",
       begin + "<linearGradient id='g'>" +
           repeated("<stop offset='.5' stop-color='red'/>", 100000) +
           "</linearGradient><rect width='400' height='400' fill='url(#g)'/></svg>"},
      {"layers upon layers",
       begin + repeated("<g opacity='.9'>", 300) + "<rect width='400' height='400'/>" +
           repeated("</g>", 300) + "</svg>",
       true},
      {"deep nesting", begin + repeated("<g>", 100000) + repeated("</g>", 100000) + "</svg>"},
      {"uses that double", begin + uses + "</svg>", true},
      {"a use of itself", begin + "<g id='a'><use xlink:href='#a'/></g></svg>", true},
      {"honest",
       begin + line + "stroke-dasharray='9,3' stroke-linejoin='round' d='M" + scattered(200) +
           "'/></svg>",
       true}};
  // What would take minutes is not waited for; what is drawn may take its time on a busy machine.
  const RendererLimits little{std::chrono::seconds(1), 200 << 20};
  for (const Row& row : kTable) {
    const auto image = readSvg(row.svg, {}, row.isDrawn ? RendererLimits{} : little);
    const std::string message = image ? "" : image.error().message;
    EXPECT_EQ(image.has_value(), row.isDrawn) << row.what << ": " << message;
    EXPECT_TRUE(image || message.starts_with("the SVG ")) << row.what << ": " << message;
  }
}

TEST_F(ImageFileTest, SvgLoadsNoExternalResources) {
  QImage red(4, 4, QImage::Format_RGB32);
  red.fill(Qt::red);
  const QByteArray png = encoded(red, "png");
  const QByteArray outside = path(QStringLiteral("red.png")).toUtf8();
  put(QStringLiteral("red.png"), png);
  put(QStringLiteral("style.css"), "rect { fill: #ff0000 }");
  const QByteArray begin =
      "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
      "width='8' height='8'>";
  const auto image = [](const QByteArray& address) {
    return QByteArray("<image width='8' height='8' xlink:href='" + address + "'/>");
  };
  const QByteArray nested = begin + image("file://" + outside) + "</svg>";
  struct Row {
    const char* what;
    QByteArray svg;
    QRgb middle;
  };
  const Row kTable[] = {
      {"embedded bitmap", begin + image("data:image/png;base64," + png.toBase64()) + "</svg>",
       qRgb(255, 0, 0)},
      {"own definition",
       begin + "<defs><rect id='r' width='8' height='8' fill='red'/></defs>"
               "<use xlink:href='#r'/></svg>",
       qRgb(255, 0, 0)},
      {"file beside", begin + image("red.png") + "</svg>", 0},
      {"file by path", begin + image(outside) + "</svg>", 0},
      {"file by address", nested, 0},
      {"file behind an embedded SVG",
       begin + image("data:image/png;base64," + nested.toBase64()) + "</svg>", 0},
      {"style sheet",
       "<?xml-stylesheet type='text/css' href='" + path(QStringLiteral("style.css")).toUtf8() +
           "'?>" + begin + "<rect width='8' height='8' fill='#00ff00'/></svg>",
       qRgb(0, 255, 0)}};
  const QString here = QDir::currentPath();
  QDir::setCurrent(folder_.path());
  for (const Row& row : kTable) {
    put(QStringLiteral("a.svg"), row.svg);
    const QImage seen = read(QStringLiteral("a.svg"));
    ASSERT_FALSE(seen.isNull()) << row.what << ": " << qPrintable(error_);
    EXPECT_EQ(seen.pixel(4, 4), row.middle) << row.what;
  }
  QDir::setCurrent(here);
}

}  // namespace
}  // namespace kelvar
