#include "widgets/displays/DisplayBuilders.h"

#include "graphics/Image.h"
#include "widgets/displays/AnalogMeter.h"
#include "widgets/displays/ChainView.h"
#include "widgets/displays/CorrelationMeter.h"
#include "widgets/displays/Graph.h"
#include "widgets/displays/Meter.h"
#include "widgets/displays/PhaseScope.h"
#include "widgets/displays/QM3Matrix.h"
#include "widgets/displays/SimpleWindow.h"
#include "widgets/displays/TapDelayDisplay.h"
#include "widgets/displays/Tuner.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

using GUI::Widget;
using Graphics::Image;
using Point = BasicPoint<int>;
using Rect = BasicRect<int>;

// A place or a distance within what a layout may give.
int Extent(const ElementContext& context, const char* name, int fallback = 0)
{
    return std::clamp(context.integer(name, fallback), -maxLayoutExtent, maxLayoutExtent);
}

double Coordinate(const ElementContext& context, const char* name)
{
    const double value = context.real(name);
    return std::isfinite(value) ? std::clamp(value, -double(maxLayoutExtent), double(maxLayoutExtent)) : 0.0;
}

Point PointOf(const ElementContext& context, const std::string& stem)
{
    return {Extent(context, (stem + "X").c_str()), Extent(context, (stem + "Y").c_str())};
}

Rect RectOf(const ElementContext& context, const std::string& stem, const char* x, const char* y, const char* w, const char* h)
{
    return LimitedRect({context.integer((stem + x).c_str()), context.integer((stem + y).c_str()), context.integer((stem + w).c_str()),
                        context.integer((stem + h).c_str())});
}

// The element's rect, sized as `image` when it gives no size.
Rect SizedBy(const ElementContext& context, const Image* image)
{
    return image ? context.rect(image->size()) : context.rect();
}

}  // namespace

Widget* BuildMeter(ElementContext& context)
{
    Image* const off = context.image(context.text("ImageOff"));
    Image* const on = context.image(context.text("ImageOn"));
    if (!off || !on)
        return nullptr;
    Meter::Settings settings;
    settings.leds = context.integer("NumOfLeds");
    settings.halfLeds = context.integer("HalfLeds") != 0;
    const std::string orientation = context.text("Orientation");
    settings.orientation = orientation == "RightToLeft" ? Meter::RightToLeft
        : orientation == "BottomToTop"                  ? Meter::BottomToTop
        : orientation == "TopToBottom"                  ? Meter::TopToBottom
                                                        : Meter::LeftToRight;
    settings.ledsOffset = PointOf(context, "LedsOffset");
    settings.minValue = context.realFloat("MinValue", 0.0);
    settings.maxValue = context.realFloat("MaxValue", 1.0);
    return new Meter(context.parent(), SizedBy(context, off), *off, *on, settings);
}

Widget* BuildAnalogMeter(ElementContext& context)
{
    Image* const background = context.image(context.text("Background"));
    Image* const cover = context.image(context.text("Cover"));
    AnalogMeter::Needle needle;
    needle.origin = {Coordinate(context, "ArrowOriginX"), Coordinate(context, "ArrowOriginY")};
    needle.minEnd = {Coordinate(context, "ArrowMinX"), Coordinate(context, "ArrowMinY")};
    needle.maxEnd = {Coordinate(context, "ArrowMaxX"), Coordinate(context, "ArrowMaxY")};
    needle.ccw = context.integer("CCW") != 0;
    needle.wedge = context.integer("ArrowShape") != 0;
    needle.shadowMinOffset = {Coordinate(context, "ShadowMinOffsetX"), Coordinate(context, "ShadowMinOffsetY")};
    needle.shadowMaxOffset = {Coordinate(context, "ShadowMaxOffsetX"), Coordinate(context, "ShadowMaxOffsetY")};
    needle.minValue = context.realFloat("MinValue", 0.0);
    needle.maxValue = context.realFloat("MaxValue", 1.0);
    if (context.has("Thickness"))
        needle.thickness = std::clamp(Coordinate(context, "Thickness"), 0.5, 64.0);
    needle.color = context.color("ArrowColor", needle.color);
    needle.shadowColor = context.color("ShadowColor", needle.shadowColor);
    return new AnalogMeter(context.parent(), SizedBy(context, background), background, cover, PointOf(context, "Cover"), needle);
}

Widget* BuildTuner(ElementContext& context)
{
    Image* const off = context.image(context.text("ImageOff"));
    Image* const on = context.image(context.text("ImageOn"));
    if (!off || !on)
        return nullptr;
    return new Tuner(context.parent(), SizedBy(context, off), *off, *on, context.realFloat("MinValue", 0.0), context.realFloat("MaxValue", 1.0),
                     context.integer("Feather"));
}

Widget* BuildGraph(ElementContext& context)
{
    Image* const background = context.image(context.text("Background"));
    const auto scale = [&context](const char* name) {
        return context.text(name, "Linear") == "Linear" ? Graph::Linear : Graph::Logarithmic;
    };
    return new Graph(context.parent(), SizedBy(context, background), background, context.integer("Tiled") != 0,
                     context.color("BorderColor", 0), scale("ScaleX"), scale("ScaleY"));
}

Widget* BuildSimpleWindow(ElementContext& context)
{
    Image* const image = context.image(context.text("Image"));
    if (!image)
        return nullptr;
    return new SimpleWindow(context.parent(), SizedBy(context, image), *image, RectOf(context, "ResRect", "X", "Y", "W", "H"),
                            RectOf(context, "DragArea", "X", "Y", "W", "H"));
}

Widget* BuildPhaseScope(ElementContext& context)
{
    Image* const background = context.image(context.text("Background"));
    const auto mode = context.text("DisplayMode") == "Dots" ? PhaseScope::Dots : PhaseScope::Lines;
    return new PhaseScope(context.parent(), SizedBy(context, background), background, context.color("Color", 0xFF40FF40), mode,
                          context.integer("Persistance"));
}

Widget* BuildCorrelationMeter(ElementContext& context)
{
    Image* const background = context.image(context.text("Background"));
    CorrelationMeter::Colors colors;
    colors.min = context.color("ColorMin", colors.min);
    colors.max = context.color("ColorMax", colors.max);
    colors.shadow = context.color("ColorShadow", colors.shadow);
    colors.value = context.color("Color", colors.value);
    return new CorrelationMeter(context.parent(), SizedBy(context, background), background, colors, context.integer("Persistance"),
                                context.real("LineThickness", 2.0));
}

Widget* BuildTapDelayDisplay(ElementContext& context)
{
    TapDelayDisplay::Look look;
    look.background = context.image(context.text("Backgrund"));
    look.displayArea = RectOf(context, "DisplayArea", "PositionX", "PositionY", "SizeW", "SizeH");
    look.rows = context.integer("NumberOfRows", look.rows);
    look.font = context.font(context.text("Font"));
    look.fontColor = context.color("FontColor", look.fontColor);
    look.rowColor = context.color("DelayRowColor", look.rowColor);
    look.selectedRowColor = context.color("DelayRowSelectedColor", look.selectedRowColor);
    return new TapDelayDisplay(context.parent(), SizedBy(context, look.background), look, context.integer("NumberOfTaps"));
}

Widget* BuildChainView(ElementContext& context)
{
    ChainView::Look look;
    look.nodeSize = {Extent(context, "NodeDistX", look.nodeSize.x), Extent(context, "NodeDistY", look.nodeSize.y)};
    look.spacing = {Extent(context, "NodeDistSpacingX", look.spacing.x), Extent(context, "NodeDistSpacingY", look.spacing.y)};
    look.font = context.font(context.text("Font"));
    look.color = context.color("Color", look.color);
    look.textOffset = PointOf(context, "TextSpacing");
    look.textWidth = Extent(context, "TextSizeW");
    return new ChainView(context.parent(), context.rect(), look);
}

Widget* BuildQM3Matrix(ElementContext& context)
{
    QM3Matrix::Look look;
    look.nameFont = context.font(context.text("CellNameFont"));
    look.textFont = context.font(context.text("CellTextFont"));
    look.faderColor = context.color("FaderColor", look.faderColor);
    look.borderColor = context.color("BorderColor", look.borderColor);
    look.offCellColor = context.color("OffCellColor", look.offCellColor);
    look.onCellColor = context.color("OnCellColor", look.onCellColor);
    look.selectedCellColor = context.color("SelectedCellColor", look.selectedCellColor);
    look.cellsShown = {context.integer("NumberOfCellsX", look.cellsShown.x), context.integer("NumberOfCellsY", look.cellsShown.y)};
    look.arrowLeft = context.image(context.text("ArrowLeftImg"));
    look.arrowRight = context.image(context.text("ArrowRightImg"));
    look.arrowUp = context.image(context.text("ArrowUpImg"));
    look.arrowDown = context.image(context.text("ArrowDownImg"));
    return new QM3Matrix(context.parent(), context.rect(), look);
}

}  // namespace OV::CFW::Widgets
