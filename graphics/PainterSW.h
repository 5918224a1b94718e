#pragma once

#include "graphics/Painter.h"

#include <cstdint>
#include <memory>

namespace OV::CFW::Graphics {

// The painter of the software device on a block of 32-bit pixels it does not own (an image, or
// a window's back buffer). Blits, lines and rectangles are integer loops with the toolkit's
// blend rules; strokes, curves, polygons, rotated images and outline text go through AGG's
// scanline rasteriser with the coverage blend. See Painter for the operations.
class PainterSW : public Painter {
public:
    // `pitch` in bytes; negative when rows run upwards from `pixels`.
    PainterSW(std::uint32_t* pixels, int pitch, const BasicPoint<int>& size);
    ~PainterSW() override;
    PainterSW(const PainterSW&) = delete;
    PainterSW& operator=(const PainterSW&) = delete;

    void setDeviceClip(const BasicRect<int>& rect) override;
    void setOrigin(const BasicPoint<int>& point) override { origin = point; }
    void setClipRect(const BasicRect<int>& rect) override;
    const BasicRect<int>& getClipRect() const override { return clipRect; }
    void clear(Color color) override;
    void drawLine(Color color, const BasicPoint<double>& from, const BasicPoint<double>& to, double width) override;
    void drawPolyline(Color color, const BasicPoint<double>* points, int count, double width) override;
    void drawCurve(Color color, const BasicPoint<double>* points, int count, double width, double smoothness) override;
    void fillPolygon(Color color, const BasicPoint<double>* points, int count, double smoothness) override;
    void putPixel(Color color, int x, int y) override;
    Color getPixel(int x, int y) override;
    void copyToImage(const BasicRect<int>& sourceRect, Image& image, const BasicPoint<int>& destPoint) override;
    void drawHLine(Color color, const BasicPoint<int>& point, int length) override;
    void drawVLine(Color color, const BasicPoint<int>& point, int length) override;
    void drawRect(Color color, const BasicRect<int>& rect) override;
    void fillRect(Color color, const BasicRect<int>& rect) override;
    void drawImageRotated(Image& image, const BasicPoint<double>& center, double angleDegrees, const BasicRect<int>& sourceRect,
                          const BasicPoint<int>& pivot) override;
    void drawImageRotated(Image& image, const BasicPoint<double>& center, double angleDegrees,
                          const BasicRect<int>& sourceRect) override;
    void drawImageParallelogram(Image& image, const double* corners, const BasicRect<int>& sourceRect) override;
    void drawImage(Image& image, const BasicPoint<int>& point, const BasicRect<int>& sourceRect) override;
    void drawImageTinted(Image& image, int mode, Color color, const BasicPoint<int>& point,
                         const BasicRect<int>& sourceRect) override;
    void drawTextAligned(Font& font, Color color, const std::string& text, const BasicRect<int>& rect, int alignment) override;
    void drawTextAligned(Font& font, const std::string& text, const BasicRect<int>& rect, int alignment) override;
    void drawText(Font& font, Color color, const std::string& text, const BasicPoint<int>& point) override;
    void drawText(Font& font, const std::string& text, const BasicPoint<int>& point) override;

    // The direct blend of S over D: out.X = D.X + (((S.X - D.X) * S.A) >> 8), out.A = 255.
    static Color BlendDirect(Color source, Color destination);

private:
    struct Agg; // AGG's buffer, renderer, rasteriser, scanline and span buffer on the pixels
    struct AggDeleter {
        void operator()(Agg* agg) const;
    };
    // These three in PainterSWAgg.cpp, which alone sees AGG.
    static Agg* CreateAgg(std::uint32_t* pixels, int pitch, int width, int height);
    void UpdateAggClip();
    void DrawOutlineText(const Font& font, Color color, const std::string& text, const BasicPoint<int>& point);

    std::uint32_t* Row(int y) const;
    // effectiveClip = deviceClip ∩ clip, in surface coordinates; AGG's clip boxes follow.
    void UpdateEffectiveClip(const BasicRect<int>& clip);

    std::uint32_t* pixels;
    int pitch;
    int width;
    int height;
    BasicRect<int> deviceClip;
    BasicPoint<int> origin;
    BasicRect<int> clipRect;
    BasicRect<int> effectiveClip;
    std::unique_ptr<Agg, AggDeleter> agg;
};

}  // namespace OV::CFW::Graphics
