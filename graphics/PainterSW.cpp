#include "graphics/PainterSW.h"

#include "graphics/FontEPI.h"
#include "graphics/Image.h"

#include <algorithm>
#include <cstring>

namespace OV::CFW::Graphics {

namespace {

// out.X = D.X + (((S.X - D.X) * a) >> 8), floored, for R, G, B; out.A = 255. R and B share one
// multiply: with D.X << 8 added first every field holds D.X * (256 - a) + S.X * a, between 0
// and 65280, so no field borrows from or carries into its neighbour.
inline Color Mix(Color s, Color d, std::uint32_t a)
{
    const std::uint32_t drb = d & 0x00ff00ffu;
    const std::uint32_t dg = d & 0x0000ff00u;
    const std::uint32_t rb = ((drb << 8) + ((s & 0x00ff00ffu) - drb) * a) >> 8;
    const std::uint32_t g = ((dg << 8) + ((s & 0x0000ff00u) - dg) * a) >> 8;
    return 0xff000000u | (rb & 0x00ff00ffu) | (g & 0x0000ff00u);
}

struct Surface {
    std::uint32_t* pixels;
    int pitch; // bytes
    std::uint32_t* at(int x, int y) const
    {
        return reinterpret_cast<std::uint32_t*>(reinterpret_cast<std::uint8_t*>(pixels) + static_cast<std::ptrdiff_t>(y) * pitch) + x;
    }
};

// w × h pixels from (sx, sy) of a source to (dx, dy) of a target.
struct Blit {
    int sx, sy, dx, dy, w, h;
};

// Cuts the pair of rects in this order: a negative source corner, the source's size, the
// target's clip at its near and then at its far edges. False when nothing is left.
bool Cut(const BasicRect<int>& source, long long dx, long long dy, const BasicPoint<int>& sourceSize,
         const BasicRect<int>& clip, Blit& blit)
{
    long long sx = source.x, sy = source.y, w = source.width, h = source.height;
    if (sx < 0) {
        dx -= sx;
        w += sx;
        sx = 0;
    }
    if (sy < 0) {
        dy -= sy;
        h += sy;
        sy = 0;
    }
    w = std::min(w, sourceSize.x - sx);
    h = std::min(h, sourceSize.y - sy);
    if (dx < clip.x) {
        sx += clip.x - dx;
        w -= clip.x - dx;
        dx = clip.x;
    }
    if (dy < clip.y) {
        sy += clip.y - dy;
        h -= clip.y - dy;
        dy = clip.y;
    }
    w = std::min(w, clip.x + static_cast<long long>(clip.width) - dx);
    h = std::min(h, clip.y + static_cast<long long>(clip.height) - dy);
    if (w < 1 || h < 1)
        return false;
    blit = {static_cast<int>(sx), static_cast<int>(sy), static_cast<int>(dx), static_cast<int>(dy), static_cast<int>(w),
            static_cast<int>(h)};
    return true;
}

bool SameSurface(const Surface& a, const Surface& b)
{
    return a.pixels == b.pixels && a.pitch == b.pitch;
}

// Rows from the bottom up when source and target are one surface and the source lies above,
// so that an overlapping copy reads each row before it is overwritten.
template <typename RowOp>
void ForEachRow(const Blit& b, const Surface& source, const Surface& target, RowOp op)
{
    const bool upwards = SameSurface(source, target) && b.sy < b.dy;
    for (int i = 0; i < b.h; ++i) {
        const int r = upwards ? b.h - 1 - i : i;
        op(source.at(b.sx, b.sy + r), target.at(b.dx, b.dy + r));
    }
}

void Copy(const Blit& b, const Surface& source, const Surface& target)
{
    const std::size_t bytes = static_cast<std::size_t>(b.w) * sizeof(std::uint32_t);
    ForEachRow(b, source, target, [bytes](const std::uint32_t* s, std::uint32_t* d) { std::memmove(d, s, bytes); });
}

// pixel(source, target) gives the new target pixel. Within one row of one surface the pixels
// run right to left when the target lies to the right, for the same reason as the rows.
template <typename PixelOp>
void Blend(const Blit& b, const Surface& source, const Surface& target, PixelOp pixel)
{
    const int n = b.w;
    if (SameSurface(source, target) && b.sy == b.dy && b.sx < b.dx) {
        ForEachRow(b, source, target, [n, pixel](const std::uint32_t* s, std::uint32_t* d) {
            for (int x = n - 1; x >= 0; --x)
                d[x] = pixel(s[x], d[x]);
        });
        return;
    }
    ForEachRow(b, source, target, [n, pixel](const std::uint32_t* s, std::uint32_t* d) {
        for (int x = 0; x < n; ++x)
            d[x] = pixel(s[x], d[x]);
    });
}

// A bitmap font's characters one after another, each glyph a rect of the font's strip.
template <typename DrawGlyph>
void DrawBitmapText(Font& font, const std::string& text, BasicPoint<int> pen, DrawGlyph draw)
{
    const auto* bitmap = font.isBitmap() ? dynamic_cast<const FontEPI*>(&font) : nullptr;
    if (!bitmap)
        return;
    for (const char c : text) {
        const BasicRect<int>& glyph = bitmap->getGlyph(static_cast<unsigned char>(c));
        draw(bitmap->getImage(), pen, glyph);
        pen.x += glyph.width;
    }
}

}  // namespace

Color PainterSW::BlendDirect(Color source, Color destination)
{
    return Mix(source, destination, AlphaOf(source));
}

PainterSW::PainterSW(std::uint32_t* pixels, int pitch, const BasicPoint<int>& size)
    : pixels(pixels), pitch(pitch), width(size.x), height(size.y), deviceClip{0, 0, size.x, size.y}, origin{},
      clipRect(deviceClip), effectiveClip(deviceClip), agg(CreateAgg(pixels, pitch, size.x, size.y))
{
    UpdateAggClip();
}

PainterSW::~PainterSW() = default;

std::uint32_t* PainterSW::Row(int y) const
{
    return Surface{pixels, pitch}.at(0, y);
}

void PainterSW::UpdateEffectiveClip(const BasicRect<int>& clip)
{
    effectiveClip = Intersect(deviceClip, clip);
    UpdateAggClip();
}

void PainterSW::setDeviceClip(const BasicRect<int>& rect)
{
    deviceClip = Intersect(rect, {0, 0, width, height});
    // The stored clip rect as it stands, without the origin.
    UpdateEffectiveClip(clipRect);
}

void PainterSW::setClipRect(const BasicRect<int>& rect)
{
    clipRect = rect;
    UpdateEffectiveClip(Moved(rect, origin));
}

void PainterSW::clear(Color color)
{
    for (int y = 0; y < height; ++y)
        std::fill_n(Row(y), std::max(width, 0), color);
}

void PainterSW::putPixel(Color color, int x, int y)
{
    x += origin.x;
    y += origin.y;
    if (effectiveClip.contains(x, y))
        Row(y)[x] = BlendDirect(color, Row(y)[x]);
}

Color PainterSW::getPixel(int x, int y)
{
    return BlendDirect(Row(y + origin.y)[x + origin.x], 0xffffffffu);
}

void PainterSW::drawHLine(Color color, const BasicPoint<int>& point, int length)
{
    const long long y = static_cast<long long>(point.y) + origin.y;
    if (length <= 0 || y < effectiveClip.y || y >= static_cast<long long>(effectiveClip.y) + effectiveClip.height)
        return;
    const long long x = static_cast<long long>(point.x) + origin.x;
    const long long x0 = std::max<long long>(x, effectiveClip.x);
    const long long x1 = std::min(x + length, static_cast<long long>(effectiveClip.x) + effectiveClip.width);
    std::uint32_t* row = Row(static_cast<int>(y));
    for (long long i = x0; i < x1; ++i)
        row[i] = BlendDirect(color, row[i]);
}

void PainterSW::drawVLine(Color color, const BasicPoint<int>& point, int length)
{
    const long long x = static_cast<long long>(point.x) + origin.x;
    if (length <= 0 || x < effectiveClip.x || x >= static_cast<long long>(effectiveClip.x) + effectiveClip.width)
        return;
    const long long y = static_cast<long long>(point.y) + origin.y;
    const long long y0 = std::max<long long>(y, effectiveClip.y);
    const long long y1 = std::min(y + length, static_cast<long long>(effectiveClip.y) + effectiveClip.height);
    for (long long i = y0; i < y1; ++i) {
        std::uint32_t& p = Row(static_cast<int>(i))[x];
        p = BlendDirect(color, p);
    }
}

void PainterSW::drawRect(Color color, const BasicRect<int>& rect)
{
    if (rect.width < 1 || rect.height < 1)
        return;
    // Each corner is blended once: the sides stop short of the top and bottom edges.
    drawHLine(color, {rect.x, rect.y}, rect.width);
    if (rect.height >= 2)
        drawHLine(color, {rect.x, rect.y + rect.height - 1}, rect.width);
    if (rect.height >= 3) {
        drawVLine(color, {rect.x, rect.y + 1}, rect.height - 2);
        drawVLine(color, {rect.x + rect.width - 1, rect.y + 1}, rect.height - 2);
    }
}

void PainterSW::fillRect(Color color, const BasicRect<int>& rect)
{
    const BasicRect<int> r = Intersect(Moved(rect, origin), effectiveClip);
    const std::uint32_t a = AlphaOf(color);
    for (int y = r.y; y < r.y + r.height; ++y) {
        std::uint32_t* row = Row(y) + r.x;
        for (int x = 0; x < r.width; ++x)
            row[x] = Mix(color, row[x], a);
    }
}

void PainterSW::drawImage(Image& image, const BasicPoint<int>& point, const BasicRect<int>& sourceRect)
{
    Blit b;
    if (!Cut(sourceRect, static_cast<long long>(point.x) + origin.x, static_cast<long long>(point.y) + origin.y, image.size(),
             effectiveClip, b))
        return;
    const std::pair<std::uint32_t*, int> bits = image.lock();
    const Surface source{bits.first, bits.second};
    const Surface target{pixels, pitch};
    if (image.hasAlpha())
        Blend(b, source, target, [](Color s, Color d) { return Mix(s, d, AlphaOf(s)); });
    else
        Copy(b, source, target);
    image.unlock();
}

void PainterSW::drawImageTinted(Image& image, int mode, Color color, const BasicPoint<int>& point,
                                const BasicRect<int>& sourceRect)
{
    Blit b;
    if ((mode != Tint && mode != Modulate) ||
        !Cut(sourceRect, static_cast<long long>(point.x) + origin.x, static_cast<long long>(point.y) + origin.y, image.size(),
             effectiveClip, b))
        return;
    const std::pair<std::uint32_t*, int> bits = image.lock();
    const Surface source{bits.first, bits.second};
    const Surface target{pixels, pitch};
    if (mode == Tint) {
        // The colour at the source's alpha; the colour's own alpha plays no part.
        Blend(b, source, target, [color](Color s, Color d) { return Mix(color, d, AlphaOf(s)); });
    } else {
        const std::uint32_t ca = AlphaOf(color), cr = RedOf(color), cg = GreenOf(color), cb = BlueOf(color);
        Blend(b, source, target, [ca, cr, cg, cb](Color s, Color d) {
            const Color product = MakeColor(0, (RedOf(s) * cr) >> 8, (GreenOf(s) * cg) >> 8, (BlueOf(s) * cb) >> 8);
            return Mix(product, d, (AlphaOf(s) * ca) >> 8);
        });
    }
    image.unlock();
}

void PainterSW::copyToImage(const BasicRect<int>& sourceRect, Image& image, const BasicPoint<int>& destPoint)
{
    const BasicPoint<int>& size = image.size();
    Blit b;
    if (!Cut({sourceRect.x + origin.x, sourceRect.y + origin.y, sourceRect.width, sourceRect.height}, destPoint.x,
             destPoint.y, {width, height}, {0, 0, size.x, size.y}, b))
        return;
    const std::pair<std::uint32_t*, int> bits = image.lock();
    Copy(b, {pixels, pitch}, {bits.first, bits.second});
    image.unlock();
}

void PainterSW::drawText(Font& font, Color color, const std::string& text, const BasicPoint<int>& point)
{
    if (font.isOutline())
        return DrawOutlineText(font, color, text, point);
    DrawBitmapText(font, text, point, [this, color](Image& strip, const BasicPoint<int>& pen, const BasicRect<int>& glyph) {
        drawImageTinted(strip, Tint, color, pen, glyph);
    });
}

void PainterSW::drawText(Font& font, const std::string& text, const BasicPoint<int>& point)
{
    if (font.isOutline())
        return drawText(font, 0xffffffffu, text, point);
    DrawBitmapText(font, text, point, [this](Image& strip, const BasicPoint<int>& pen, const BasicRect<int>& glyph) {
        drawImage(strip, pen, glyph);
    });
}

void PainterSW::drawTextAligned(Font& font, Color color, const std::string& text, const BasicRect<int>& rect, int alignment)
{
    const BasicRect<int> placed = font.layout(text, 0, static_cast<int>(text.length()), rect, alignment);
    drawText(font, color, text, {placed.x, placed.y});
}

void PainterSW::drawTextAligned(Font& font, const std::string& text, const BasicRect<int>& rect, int alignment)
{
    const BasicRect<int> placed = font.layout(text, 0, static_cast<int>(text.length()), rect, alignment);
    drawText(font, text, {placed.x, placed.y});
}

}  // namespace OV::CFW::Graphics
