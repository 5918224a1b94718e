#pragma once

#include "graphics/Color.h"
#include "graphics/Geometry.h"

#include <string>

namespace OV::CFW::Graphics {

class Font;
class Image;

// What every widget draws with. Integer coordinates are moved by the origin and cut by the
// clip; lines, curves and polygons take points of doubles and are drawn anti-aliased. A colour
// is a word 0xAARRGGBB. Window thread only; no operation reports failure: what cannot be drawn
// is not drawn.
class Painter {
public:
    enum TintMode { Tint = 0, Modulate = 1 };

    virtual ~Painter() = default;
    // The part of the surface drawing may touch at all; the origin does not apply.
    virtual void setDeviceClip(const BasicRect<int>& rect) = 0;
    // Added to the coordinates of every later operation; leaves the clip where it is.
    virtual void setOrigin(const BasicPoint<int>& point) = 0;
    // Relative to the origin; cut by the device clip.
    virtual void setClipRect(const BasicRect<int>& rect) = 0;
    virtual const BasicRect<int>& getClipRect() const = 0;
    // The whole surface, no clip, no blending.
    virtual void clear(Color color) = 0;
    virtual void drawLine(Color color, const BasicPoint<double>& from, const BasicPoint<double>& to, double width) = 0;
    virtual void drawPolyline(Color color, const BasicPoint<double>* points, int count, double width) = 0;
    // A B-spline through the points; smoothness 0 picks the step from the points.
    virtual void drawCurve(Color color, const BasicPoint<double>* points, int count, double width, double smoothness) = 0;
    // Smoothness exactly 1 fills the straight polygon, any other value the closed B-spline.
    virtual void fillPolygon(Color color, const BasicPoint<double>* points, int count, double smoothness) = 0;
    virtual void putPixel(Color color, int x, int y) = 0;
    // The pixel over white; no clip, and the point must lie on the surface.
    virtual Color getPixel(int x, int y) = 0;
    virtual void copyToImage(const BasicRect<int>& sourceRect, Image& image, const BasicPoint<int>& destPoint) = 0;
    virtual void drawHLine(Color color, const BasicPoint<int>& point, int length) = 0;
    virtual void drawVLine(Color color, const BasicPoint<int>& point, int length) = 0;
    virtual void drawRect(Color color, const BasicRect<int>& rect) = 0;
    virtual void fillRect(Color color, const BasicRect<int>& rect) = 0;
    virtual void drawImageRotated(Image& image, const BasicPoint<double>& center, double angleDegrees,
                                  const BasicRect<int>& sourceRect, const BasicPoint<int>& pivot) = 0;
    // Pivot at the middle of `sourceRect`.
    virtual void drawImageRotated(Image& image, const BasicPoint<double>& center, double angleDegrees,
                                  const BasicRect<int>& sourceRect) = 0;
    // `corners`: x1, y1, x2, y2, x3, y3, three corners of the destination; the fourth follows.
    virtual void drawImageParallelogram(Image& image, const double* corners, const BasicRect<int>& sourceRect) = 0;
    virtual void drawImage(Image& image, const BasicPoint<int>& point, const BasicRect<int>& sourceRect) = 0;
    virtual void drawImageTinted(Image& image, int mode, Color color, const BasicPoint<int>& point,
                                 const BasicRect<int>& sourceRect) = 0;
    virtual void drawTextAligned(Font& font, Color color, const std::string& text, const BasicRect<int>& rect,
                                 int alignment) = 0;
    virtual void drawTextAligned(Font& font, const std::string& text, const BasicRect<int>& rect, int alignment) = 0;
    virtual void drawText(Font& font, Color color, const std::string& text, const BasicPoint<int>& point) = 0;
    virtual void drawText(Font& font, const std::string& text, const BasicPoint<int>& point) = 0;
};

}  // namespace OV::CFW::Graphics
