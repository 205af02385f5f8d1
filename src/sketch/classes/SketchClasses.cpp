#include "sketch/classes/SketchClasses.h"

#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/LayerRects.h"
#include "sketch/classes/MSAssetCollection.h"
#include "sketch/classes/MSAvailableOverride.h"
#include "sketch/classes/MSCurvePoint.h"
#include "sketch/classes/MSDocumentData.h"
#include "sketch/classes/MSExportRequest.h"
#include "sketch/classes/MSFlowConnection.h"
#include "sketch/classes/MSForeignSymbol.h"
#include "sketch/classes/MSImageData.h"
#include "sketch/classes/MSLayerArray.h"
#include "sketch/classes/MSPath.h"
#include "sketch/classes/MSSymbolCreator.h"
#include "sketch/classes/RulersAndGrids.h"
#include "sketch/classes/SharedStyles.h"
#include "sketch/classes/StyleClasses.h"
#include "sketch/classes/SymbolOverrides.h"
#include "sketch/classes/TextAttributes.h"

namespace kelvar {

QList<const ClassInfo*> sketchClasses() {
  return {&MSDocumentData::staticClassInfo(),
          &MSExportRequest::staticClassInfo(),
          &MSImmutableLayerAncestry::staticClassInfo(),
          &layerClass(),
          &styledLayerClass(),
          &groupClass(),
          &pageClass(),
          &artboardClass(),
          &symbolMasterClass(),
          &shapeGroupClass(),
          &shapeLayerClass(),
          &rectangleClass(),
          &ovalClass(),
          &triangleClass(),
          &polygonClass(),
          &starClass(),
          &textLayerClass(),
          &bitmapLayerClass(),
          &symbolInstanceClass(),
          &sliceClass(),
          &hotspotClass(),
          &MSLayerArray::staticClassInfo(),
          &LayerFrame::staticClassInfo(),
          &AbsoluteRect::staticClassInfo(),
          &SharedStyles::staticClassInfo(),
          &sharedStyleClass(),
          &styleClass(),
          &fillClass(),
          &borderClass(),
          &borderOptionsClass(),
          &shadowClass(),
          &innerShadowClass(),
          &blurClass(),
          &graphicsContextSettingsClass(),
          &gradientClass(),
          &gradientStopClass(),
          &MSColor::staticClassInfo(),
          &MSColor::immutableClassInfo(),
          &MSImageData::staticClassInfo(),
          &exportOptionsClass(),
          &exportFormatClass(),
          &MSOverridePoint::staticClassInfo(),
          &MSAvailableOverride::staticClassInfo(),
          &MSPath::staticClassInfo(),
          &MSSymbolCreator::staticClassInfo(),
          &foreignSymbolClass(),
          &overrideValueClass(),
          &textStyleClass(),
          &MSAssetCollection::staticClassInfo(),
          &colorAssetClass(),
          &gradientAssetClass(),
          &curvePointClass(),
          &flowClass(),
          &rulerClass(),
          &gridClass(),
          &layoutClass()};
}

}  // namespace kelvar
