// Writes the example document: a design of a weather app, and a mockup with a phone whose screen is
// empty. Every run writes the same bytes.

#include <QFile>
#include <cstdio>
#include <map>

#include "Parts.h"
#include "platform/files/File.h"
#include "platform/files/FileName.h"
#include "platform/files/ZipArchive.h"

namespace {

using parts::Align;
using parts::Color;
using parts::Json;

constexpr Color kWhite{"#ffffff"};
constexpr const char* kRegular = "Inter-Regular";
constexpr const char* kBold = "Inter-Bold";

Json screen() {
  std::vector<Json> layers{
      parts::rectangle(
          "Sky", {0, 0, 375, 812}, 0,
          parts::style({parts::gradientFill({"#2b5876"}, {"#f7b267"}, {0.5, 0}, {0.5, 1})})),
      parts::oval("Sun", {212, 96, 220, 220}, parts::style({parts::plainFill({"#ffd166", 0.9})})),
      parts::text("Place", "Lisbon", {32, 72, 311, 41}, kBold, 34, kWhite),
      parts::text("Today", "Monday, 12 May", {32, 114, 311, 20}, kRegular, 17, kWhite),
      parts::text("Degrees", "24\u00b0", {32, 170, 311, 117}, kBold, 96, kWhite),
      parts::text("Words", "Clear until the evening", {32, 292, 311, 24}, kRegular, 20, kWhite)};
  const struct {
    const char* day;
    const char* degrees;
    double warmth;
  } days[] = {{"Tuesday", "25\u00b0", 0.7},
              {"Wednesday", "22\u00b0", 0.45},
              {"Thursday", "19\u00b0", 0.3},
              {"Friday", "27\u00b0", 0.9}};
  double y = 392;
  for (const auto& [day, degrees, warmth] : days) {
    layers.push_back(parts::rectangle("Card", {24, y, 327, 84}, 18,
                                      parts::style({parts::plainFill({"#ffffff", 0.92})},
                                                   {parts::shadow({"#1b3a4b", 0.25}, 4, 12)})));
    layers.push_back(parts::text(day, day, {48, y + 18, 160, 22}, kBold, 18, {"#1b3a4b"}));
    layers.push_back(parts::text("Degrees", degrees, {227, y + 26, 100, 29}, kBold, 24, {"#1b3a4b"},
                                 Align::Right));
    layers.push_back(parts::rectangle("Track", {48, y + 54, 160, 8}, 4,
                                      parts::style({parts::plainFill({"#d8e2e7"})})));
    layers.push_back(parts::rectangle("Warmth", {48, y + 54, 160 * warmth, 8}, 4,
                                      parts::style({parts::plainFill({"#f4845f"})})));
    y += 100;
  }
  return parts::artboard("Screen", {0, 0, 375, 812}, kWhite, layers);
}

Json mockup() {
  // A phone that leans to the left, seen from a little above.
  const std::vector<parts::Point> body{{402, 96}, {716, 62}, {838, 768}, {470, 846}};
  const std::vector<parts::Point> glass{{420, 120}, {702, 89}, {815, 754}, {484, 821}};
  return parts::artboard(
      "Mockup", {455, 0, 1200, 900}, {"#e9e4dc"},
      {parts::oval("Pool of light", {150, 40, 900, 820},
                   parts::style({parts::plainFill({"#f6f2ec"})})),
       parts::polygon("Body", body, 46,
                      parts::style({parts::gradientFill({"#3a3f45"}, {"#15171a"}, {0, 0}, {1, 1})},
                                   {parts::shadow({"#000000", 0.35}, 36, 60)})),
       parts::polygon("Glass", glass, 0, parts::style({parts::plainFill({"#0b0c0e"})}))});
}

std::map<QString, QByteArray> files() {
  const Json page = parts::page("Weather", {screen(), mockup()});
  const auto packed = [](const Json& json) { return QByteArray::fromStdString(json.dump()); };
  const QString pageName =
      QStringLiteral("pages/%1.json").arg(QString::fromStdString(page["do_objectID"]));
  return {{QStringLiteral("document.json"), packed(parts::documentFile(page))},
          {QStringLiteral("meta.json"), packed(parts::metaFile(page))},
          {QStringLiteral("user.json"), packed(parts::userFile(page))},
          {pageName, packed(page)}};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: kelvar-example-document OUT.sketch\n");
    return 2;
  }
  const auto written =
      kelvar::ZipArchive::read({})
          .and_then([](const auto& empty) { return empty->written(files(), {}); })
          .and_then([&](const QByteArray& document) {
            return kelvar::File::writeAtomically(kelvar::fileNameFromBytes(argv[1]), document);
          });
  if (written) return 0;
  std::fprintf(stderr, "%s\n", written.error().message.c_str());
  return 1;
}
